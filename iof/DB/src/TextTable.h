// Texts of enumerations numbered from 0, written once for the record classes.
#pragma once

#include <cstddef>

namespace IOF::Detail {

// The text of `value` in `texts`; `fallback` for a value outside the table or at a gap
// (a null entry).
template <std::size_t N>
constexpr const wchar_t* TextOf(int value, const wchar_t* const (&texts)[N], const wchar_t* fallback) noexcept {
  return value >= 0 && static_cast<std::size_t>(value) < N && texts[value] ? texts[value] : fallback;
}

}  // namespace IOF::Detail
