// The version the programs report: "galeris --version" and "galeris-sim --version".
#pragma once

namespace galeris {

inline constexpr const char* kProgramVersion = "3.1";

}  // namespace galeris
