// Every writer on a disk that fills up: the old file stays whole, nothing partial is left beside
// it, and the user is told. The file-size limit makes the writes fail as a full disk would.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <functional>

#include "core/headless_ui.h"
#include "core/workspace.h"
#include "exchange/text_exchange.h"
#include "files/conversion_file.h"
#include "files/defaults_file.h"
#include "files/fan_database.h"
#include "files/lifecycle.h"
#include "files/network_file.h"
#include "realtime/realtime_output.h"
#include "realtime/remotes_file.h"
#include "tests/support/test_support.h"

namespace galeris {
namespace {

// Writes past a few bytes fail with EFBIG while it lives.
class SmallDisk {
 public:
  SmallDisk() {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &saved_);
    rlimit tiny = saved_;
    tiny.rlim_cur = 64;
    setrlimit(RLIMIT_FSIZE, &tiny);
  }
  ~SmallDisk() { setrlimit(RLIMIT_FSIZE, &saved_); }

 private:
  rlimit saved_{};
};

struct Writer {
  const char* file;
  const char* told;  // the message shown; empty where the caller is told by a false
  std::function<bool(Workspace&, const std::string& path)> write;  // false: not written
};

const Writer kWriters[] = {
    {"mine.sim", kMsgSaveFailed,
     [](Workspace& ws, const std::string& path) {
       ws.net.FileName = path;
       const std::string note = ws.net.FileNote;
       return SaveNetwork(ws, 0) || ws.net.FileNote != note;  // a failed save stamps nothing
     }},
    {"Defaults.dat", "Error saving defaults",
     [](Workspace& ws, const std::string&) {
       ws.DefaultsSaved = 0;
       SaveDefaults(ws);
       return ws.DefaultsSaved != 0;
     }},
    {"Conversion.dat", "Error savings conversion values",
     [](Workspace& ws, const std::string& path) {
       HeadlessUi& ui = dynamic_cast<HeadlessUi&>(ws.ui);
       const std::size_t told = ui.MessageTexts().size();
       SaveConversion(ws.units, path, ui);
       return ui.MessageTexts().size() == told;
     }},
    {"fansdata.dat", "", [](Workspace& ws, const std::string&) { return SaveFanDatabase(ws); }},
    {"Remotes.dat", "", [](Workspace& ws, const std::string&) { return SaveRemotes(ws); }},
    {"flows.txt", kMsgOutputWrite,
     [](Workspace& ws, const std::string& path) {
       ws.remote.OutputFile = path;
       return WriteRealtimeOutput(ws);
     }},
    {"mine.txt", "", [](Workspace& ws, const std::string& path) { return ExportText(ws, path); }},
};

TEST(FullDisk, EveryWriterLeavesTheOldFileWholeAndTellsTheUser) {
  for (const Writer& w : kWriters) {
    SCOPED_TRACE(w.file);
    HeadlessUi ui;
    Workspace ws(ui);
    ws.paths.ProgramFolder = ws.paths.TempFolder = test::ScratchDir();
    ws.units = BuiltInUnits();
    SetBuiltInDefaults(ws);
    ClearNetwork(ws);
    for (int k = 0; k < 4; ++k) test::AddAirway(ws.net, 0, 100 * k, 0, 0, 100 * k + 100, 0);
    const std::string path = ws.paths.InProgram(w.file);
    const std::string old = "the file as it was\r\n";
    test::WriteFile(path, old);

    bool written;
    {
      SmallDisk full;
      written = w.write(ws, path);
    }
    EXPECT_EQ(test::ReadFile(path), old);
    EXPECT_FALSE(std::filesystem::exists(path + ".partial"));
    EXPECT_FALSE(written);
    if (*w.told) {
      EXPECT_EQ(ui.MessageTexts(), std::vector<std::string>{w.told});
    }

    // With room on the disk the same writer replaces the file.
    EXPECT_TRUE(w.write(ws, path));
    EXPECT_NE(test::ReadFile(path), old);
  }
}

}  // namespace
}  // namespace galeris
