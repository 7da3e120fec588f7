// One libFuzzer target; GALERIS_FUZZ_READER names the reader it drives.
#include <cstddef>
#include <cstdint>

#include "fuzz/reader_harness.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  galeris::fuzz::RunReader(GALERIS_FUZZ_READER, {reinterpret_cast<const char*>(data), size});
  return 0;
}
