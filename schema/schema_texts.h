#pragma once

#include <string_view>

namespace zel::schema {

/// The files of this folder as they were when the program was built; batches are parted by lines with GO.
extern const std::string_view tables;
extern const std::string_view indexes;
extern const std::string_view procedures;
extern const std::string_view rows;
extern const std::string_view demo_chart;

} // namespace zel::schema
