#pragma once

#include <string_view>

namespace zel::demo {

/// The files of this folder as they were when the program was built.
extern const std::string_view chart;
extern const std::string_view courses;
extern const std::string_view names;
extern const std::string_view schedule;
extern const std::string_view sundries;
extern const std::string_view setup;

} // namespace zel::demo
