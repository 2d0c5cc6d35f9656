// DbId: the 64-bit identifier of a record in a DbMgr. 0 is the null id.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <iosfwd>

namespace Quarp {

class DbId {
 public:
  constexpr DbId() noexcept = default;
  constexpr explicit DbId(std::uint64_t value) noexcept : m_value(value) {}

  constexpr explicit operator std::uint64_t() const noexcept { return m_value; }
  constexpr std::uint64_t Value() const noexcept { return m_value; }
  constexpr bool IsNull() const noexcept { return m_value == 0; }

  friend constexpr bool operator==(DbId, DbId) noexcept = default;
  friend constexpr std::strong_ordering operator<=>(DbId, DbId) noexcept = default;

 private:
  std::uint64_t m_value = 0;
};

inline constexpr DbId kNullDbId{};

std::ostream& operator<<(std::ostream& os, DbId id);

}  // namespace Quarp

template <>
struct std::hash<Quarp::DbId> {
  std::size_t operator()(Quarp::DbId id) const noexcept { return std::hash<std::uint64_t>()(id.Value()); }
};
