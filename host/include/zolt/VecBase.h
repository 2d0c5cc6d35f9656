// The host's small fixed-size math vector.
#pragma once

#include <cstddef>

namespace Zolt::Math::Vector {

template <int N, class T>
class VecBase {
 public:
  static_assert(N > 0);
  constexpr VecBase() noexcept : m_v{} {}
  template <class... U>
  requires(sizeof...(U) == N) constexpr VecBase(U... values) noexcept : m_v{static_cast<T>(values)...} {}

  constexpr T& operator[](int i) noexcept { return m_v[i]; }
  constexpr const T& operator[](int i) const noexcept { return m_v[i]; }
  static constexpr int Size() noexcept { return N; }

 private:
  T m_v[N];
};

}  // namespace Zolt::Math::Vector
