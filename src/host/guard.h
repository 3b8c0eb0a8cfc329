// Keeps exceptions on this side of the host boundary: every script function
// runs its body through one of these and answers its documented failure value.
#pragma once

#include <utility>

namespace ZOLVA {

template <typename R, typename Body>
R Guarded(R failure, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return failure;
  }
}

template <typename Body>
void GuardedVoid(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
  } catch (...) {
  }
}

}  // namespace ZOLVA
