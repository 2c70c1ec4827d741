// How the texts of a workbook become codes and descriptions. Blanks are U+0020 only; tabs and other white space stay.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tolvan {

inline constexpr std::size_t itemCodeLength = 14;
inline constexpr std::size_t shortCodeLength = 12;
inline constexpr std::size_t descriptionLength = 125;

/// A brand, department or list that the source lacks.
inline constexpr std::string_view defaultCode = "DEF";

/// Without blanks and line ends, the first `length` characters, in upper case.
std::string CleanCode(std::string_view text, std::size_t length);

/// The first `length` characters in upper case, without hyphens, slashes, points and line ends, trimmed, each pair of
/// blanks made one. One pass only, so that three blanks become two: deliberate, stored descriptions depend on it.
std::string CleanDescription(std::string_view text, std::size_t length);

/// What is made of model and brand names: without blanks, hyphens, slashes and points, the first 12 characters, in
/// upper case.
std::string CleanModelCode(std::string_view text);

}  // namespace tolvan
