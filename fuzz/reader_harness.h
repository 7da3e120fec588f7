// Runs one of the program's file readers over arbitrary bytes, as the fuzz targets and the
// replay test do: the bytes become a scratch file under TMPDIR, the reader runs with a
// headless UI that answers every question with Yes (or the offered text), and a reader that
// refuses a network file must leave the open network exactly as it was.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace galeris::fuzz {

// network, defaults, conversion, fans, remotes, stations, text_import, dxf_import.
const std::vector<std::string>& ReaderNames();

// Feeds the bytes to the named reader; aborts on an unknown name or when a refused load
// changed the network.
void RunReader(std::string_view reader, std::string_view bytes);

}  // namespace galeris::fuzz
