// The DXF reader of the import: pairs of lines (group code, value), the entities that make
// airways (LINE, 3DLINE, POLYLINE with its VERTEX items, LWPOLYLINE), and the scratch copy of
// a file with bare line feeds. Layers, colours and blocks are not looked at.
#include <algorithm>
#include <cctype>
#include <fstream>
#include <optional>
#include <vector>

#include "exchange/import_file.h"
#include "exchange/import_run.h"
#include "files/text_format.h"

namespace galeris {
namespace {

constexpr std::size_t kBlock = 1000;

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// Thrown when the file ends inside an entity: the entity is dropped.
struct DrawingEnded {};

class DxfScanner {
 public:
  DxfScanner(ImportRun& run, const std::string& path)
      : run_(run), net_(run.ws.net), in_(path), position_(net_.BranchCount + 1) {}

  int Scan() {
    if (position_ > net_.MaxAirways - 1) {  // merging into a full store
      run_.ws.ui.Inform(kMsgTooManyAirways);
      return net_.BranchCount;
    }
    bool inHand = false;
    while (true) {
      if (!inHand && !ReadPair()) break;
      inHand = false;
      if (ownFile_ == 0) ownFile_ = value_.compare(0, 7, "GALERIS") == 0 ? 1 : -1;
      if (code_ == "0" && value_ == "EOF") break;
      if (code_ == "0") {
        try {
          inHand = ReadEntity();
        } catch (const DrawingEnded&) {
          break;
        }
        if (full_) break;
      }
    }
    // The position in hand holds at most a chain's last vertex: nothing of it is an airway.
    BlankAirway(net_, position_);
    net_.BranchCount = static_cast<std::int16_t>(position_ - 1);
    return position_ - 1;
  }

 private:
  // One pair, trimmed and in upper case; false at the end of the file.
  bool ReadPair() {
    if (!in_.ReadLine(code_)) return false;
    if (!in_.ReadLine(value_)) return false;
    code_ = Upper(TrimBlanks(code_));
    value_ = Upper(TrimBlanks(value_));
    return true;
  }
  // A pair inside an entity: the group code as a number. A code that is not one asks whether
  // to go on, and the pair is passed over.
  int ReadGroup() {
    while (true) {
      if (!ReadPair()) throw DrawingEnded{};
      double number = 0;
      if (StrictNumber(code_, number) && number >= 0 && number < 10000 &&
          number == static_cast<int>(number))
        return static_cast<int>(number);
      run_.Trap();
    }
  }

  // Reads the entity whose group 0 is in hand; true when it stopped on the next group 0.
  bool ReadEntity() {
    if (value_ == "LINE" || value_ == "3DLINE") return ReadLine(value_ == "3DLINE");
    if (ownFile_ != -1) return false;
    if (value_ == "POLYLINE") return ReadPolyline();
    if (value_ == "LWPOLYLINE") return ReadLightPolyline();
    return false;
  }

  void StartAirway() {
    BlankAirway(net_, position_);
    net_.BranchCount = static_cast<std::int16_t>(std::max<int>(net_.BranchCount, position_));
  }
  // The position rises; false (after the message) when the store is full.
  bool NextAirway() {
    ++position_;
    if (position_ > net_.MaxAirways - 1) {
      run_.ws.ui.Inform(kMsgTooManyAirways);
      full_ = true;
      return false;
    }
    StartAirway();
    return true;
  }

  bool ReadLine(bool threeD) {
    StartAirway();
    Coord3& a = net_.Coord1[position_];
    Coord3& b = net_.Coord2[position_];
    while (true) {
      const int group = ReadGroup();
      if (group == 0) break;
      switch (group) {
        case 10:
          run_.Coordinate(value_, a[1]);
          break;
        case 20:
          run_.Coordinate(value_, a[2]);
          break;
        case 30:
          run_.Coordinate(value_, a[3]);
          break;
        case 11:
          run_.Coordinate(value_, b[1]);
          break;
        case 21:
          run_.Coordinate(value_, b[2]);
          break;
        case 31:
          run_.Coordinate(value_, b[3]);
          break;
        default:
          break;
      }
      if (threeD && group == 31) {
        NextAirway();
        return false;
      }
    }
    NextAirway();
    return true;
  }

  // A vertex of a chain: the first fills the entry end of the position, each later one the
  // exit end and then the entry end of the next position.
  void ChainVertex(const Coord3& point, bool first) {
    if (!first) {
      net_.Coord2[position_] = point;
      if (!NextAirway()) return;
    }
    net_.Coord1[position_] = point;
  }

  bool ReadPolyline() {
    std::int32_t elevation = 0;
    int group = 0;
    while ((group = ReadGroup()) != 0) {
      if (group == 30) run_.Coordinate(value_, elevation);
    }
    StartAirway();
    bool first = true;
    while (value_ == "VERTEX") {
      Coord3 point{0, 0, 0, elevation};
      while ((group = ReadGroup()) != 0) {
        if (group >= 10 && group <= 30 && group % 10 == 0)
          run_.Coordinate(value_, point[group / 10]);
      }
      ChainVertex(point, first);
      first = false;
      if (full_) return false;
    }
    // SEQEND (or whatever ends the chain) stands in hand; SEQEND's own groups are passed over
    // by the outer scan.
    return value_ != "SEQEND";
  }

  bool ReadLightPolyline() {
    std::int32_t elevation = 0;
    int remaining = -1;  // group 90 when given
    std::vector<std::array<std::int32_t, 2>> points;
    int group = 0;
    while ((group = ReadGroup()) != 0) {
      switch (group) {
        case 90: {
          // A count no int holds (or not a number) counts as not given.
          const double count = Val(value_);
          remaining = count >= 0 && count < 2147483647.0 ? static_cast<int>(count) : -1;
          break;
        }
        case 30:
        case 38:
          run_.Coordinate(value_, elevation);
          break;
        case 10:
          if (remaining == 0) break;
          if (remaining > 0) --remaining;
          points.push_back({0, 0});
          run_.Coordinate(value_, points.back()[0]);
          break;
        case 20:
          if (!points.empty()) run_.Coordinate(value_, points.back()[1]);
          break;
        default:
          break;
      }
    }
    StartAirway();
    for (std::size_t k = 0; k < points.size(); ++k) {
      ChainVertex(Coord3{0, points[k][0], points[k][1], elevation}, k == 0);
      if (full_) break;
    }
    return true;
  }

  ImportRun& run_;
  Network& net_;
  LineReader in_;
  std::string code_, value_;
  int position_;
  int ownFile_ = 0;
  bool full_ = false;
};

}  // namespace

std::string NormaliseLineEnds(Workspace& ws, const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  char block[kBlock];
  in.read(block, kBlock);
  const auto head = static_cast<std::size_t>(in.gcount());
  if (std::find(block, block + head, '\r') != block + head) return path;
  const std::string scratch = ws.paths.InTemp("tmp.dat");
  std::ofstream out(scratch, std::ios::binary | std::ios::trunc);
  if (!out) return path;
  std::string converted;
  std::size_t count = head;
  while (count > 0) {
    converted.clear();
    for (std::size_t k = 0; k < count; ++k) {
      if (block[k] == '\n') converted += '\r';
      converted += block[k];
    }
    out.write(converted.data(), static_cast<std::streamsize>(converted.size()));
    in.read(block, kBlock);
    count = static_cast<std::size_t>(in.gcount());
  }
  out.close();
  return out ? scratch : path;
}

int ReadDxfAirways(ImportRun& run, const std::string& path) {
  DxfScanner scanner(run, NormaliseLineEnds(run.ws, path));
  return scanner.Scan();
}

}  // namespace galeris
