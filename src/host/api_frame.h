// The frame every module publishes its script functions through. A module
// lists its functions in one compile-time table of `Api<...>(...)` entries, in
// registration order. From each entry's typed function the frame generates
// the guarded function registered as "API_" (it answers the entry's failure
// value when the function throws), the vararg twin ReaScript calls, and the
// definition text; the argument names are checked against the parameter count
// when the table is compiled.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>

namespace ZOLVA {

// What a vararg twin substitutes when the host passes a null double pointer.
struct NullDoubleIsZero {
  static constexpr double value = 0.0;
};
struct NullDoubleIsMinusOne {
  static constexpr double value = -1.0;
};

// Failure texts shared by several tables.
inline constexpr char kEmptyText[] = "";

// The failure value of a function without a result: it has none.
enum class NoFailure { value };

// One table entry, fixed at compile time.
struct ApiSpec {
  const char* publicName;
  const char* argNames;  // comma-separated, as scripts see them
  const char* help;
  const char* returnWord;
  std::string (*argTypes)();      // comma-separated type words
  void* (*typedAddress)();        // the guarded typed function
  void* (*vararg)(void**, int);   // the twin ReaScript calls
};

// A module: its table and the steps around its registration.
struct Module {
  const ApiSpec* api;
  size_t apiCount;
  void (*start)();  // runs before the module's functions are registered
  void (*stop)();   // runs after their "API_" names are withdrawn
};

template <size_t N>
constexpr Module MakeModule(const ApiSpec (&api)[N], void (*start)(), void (*stop)()) {
  return Module{api, N, start, stop};
}

namespace detail {

template <typename T>
struct TypeWord;
template <>
struct TypeWord<void> { static constexpr const char* text = "void"; };
template <>
struct TypeWord<int> { static constexpr const char* text = "int"; };
template <>
struct TypeWord<bool> { static constexpr const char* text = "bool"; };
template <>
struct TypeWord<double> { static constexpr const char* text = "double"; };
template <>
struct TypeWord<const char*> { static constexpr const char* text = "const char*"; };
template <>
struct TypeWord<char*> { static constexpr const char* text = "char*"; };
template <>
struct TypeWord<int*> { static constexpr const char* text = "int*"; };
template <>
struct TypeWord<double*> { static constexpr const char* text = "double*"; };

// Reads one argument slot the way ReaScript fills it: integers widened to
// pointer width, doubles by pointer, every pointer type as is.
template <typename T, typename NullDouble>
T ReadSlot(void* slot) {
  if constexpr (std::is_same_v<T, int>) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(slot));
  } else if constexpr (std::is_same_v<T, double>) {
    return slot ? *static_cast<const double*>(slot) : NullDouble::value;
  } else {
    static_assert(std::is_pointer_v<T>, "unsupported script argument type");
    return static_cast<T>(slot);
  }
}

template <typename R>
void* ResultSlot(R result) {
  if constexpr (std::is_same_v<R, bool>) {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(result ? 1 : 0));
  } else if constexpr (std::is_same_v<R, int>) {
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(result));
  } else {
    static_assert(std::is_same_v<R, const char*>, "unsupported script result type");
    return const_cast<char*>(result);
  }
}

constexpr size_t CountNames(const char* names) {
  if (*names == '\0') return 0;
  size_t count = 1;
  for (; *names; ++names) count += *names == ',' ? 1 : 0;
  return count;
}

template <auto Fn, auto Failure, typename NullDouble>
struct Entry;

template <typename R, typename... A, R (*Fn)(A...), auto Failure, typename NullDouble>
struct Entry<Fn, Failure, NullDouble> {
  static_assert(std::is_void_v<R> == std::is_same_v<decltype(Failure), NoFailure>,
                "a function with a result states its failure value; one without states none");
  static constexpr size_t kArity = sizeof...(A);
  static constexpr const char* kReturnWord = TypeWord<R>::text;

  // What the host calls as "API_": no exception leaves it.
  static R Guarded(A... args) noexcept {
    try {
      return Fn(args...);
    } catch (...) {
      if constexpr (std::is_invocable_r_v<R, decltype(Failure), A...>) {
        return Failure(args...);  // a failure that depends on the arguments
      } else if constexpr (!std::is_void_v<R>) {
        return static_cast<R>(Failure);
      }
    }
  }

  template <std::size_t... I>
  static void* Call(void** argv, std::index_sequence<I...>) {
    if constexpr (std::is_void_v<R>) {
      Guarded(ReadSlot<A, NullDouble>(argv[I])...);
      return nullptr;
    } else {
      return ResultSlot<R>(Guarded(ReadSlot<A, NullDouble>(argv[I])...));
    }
  }

  // The host passes the argument count too; like REAPER's own wrappers, the
  // twin trusts the definition text instead of checking it.
  static void* Vararg(void** argv, int /*argc*/) { return Call(argv, std::index_sequence_for<A...>{}); }

  static void* TypedAddress() { return reinterpret_cast<void*>(&Guarded); }

  static std::string ArgTypes() {
    std::string types;
    ((types += types.empty() ? "" : ",", types += TypeWord<A>::text), ...);
    return types;
  }
};

}  // namespace detail

// One table entry: the typed function, its failure value (NoFailure::value
// for a function without a result; a function of the same arguments for a
// failure that depends on them), the public name, the argument names and
// the help text; for functions with double arguments, what a null double
// pointer stands for.
template <auto Fn, auto Failure, typename NullDouble = NullDoubleIsZero>
constexpr ApiSpec Api(const char* publicName, const char* argNames, const char* help) {
  using E = detail::Entry<Fn, Failure, NullDouble>;
  if (detail::CountNames(argNames) != E::kArity) throw "argument names do not match the parameters";
  return ApiSpec{publicName, argNames, help, E::kReturnWord, &E::ArgTypes, &E::TypedAddress, &E::Vararg};
}

// The guarded form of any function the host calls: Fn's result, or Failure
// when Fn throws.
template <auto Fn, auto Failure>
inline constexpr auto Guarded = &detail::Entry<Fn, Failure, NullDoubleIsZero>::Guarded;

// Registers each function as "API_", "APIvararg_" and "APIdef_", in table order.
void RegisterModuleApi(const Module& module);

// Withdraws only the "API_" registration of each function; the vararg and
// definition registrations are deliberately left with the host.
void UnregisterModuleApi(const Module& module);

}  // namespace ZOLVA
