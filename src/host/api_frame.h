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
  // The failure value as a reader sees it: "-1", "false", "null", or a string
  // in Lua quotes ("" or '{"success":false}'). Null for a function without a
  // result, and for one whose failure answers an argument unchanged.
  const char* failureText;
  int failureArgument;  // the index of that argument, or -1
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

// Text built at compile time, for the failure texts.
template <size_t N>
struct FixedText {
  char chars[N + 1];
};

template <long long V>
struct IntegerText {
  static constexpr size_t Length() {
    size_t length = V < 0 ? 2 : 1;
    for (long long rest = V / 10; rest != 0; rest /= 10) ++length;
    return length;
  }
  static constexpr FixedText<Length()> Make() {
    FixedText<Length()> text{};
    long long rest = V;
    size_t at = Length();
    do {
      const long long digit = rest % 10;
      text.chars[--at] = static_cast<char>('0' + (digit < 0 ? -digit : digit));
      rest /= 10;
    } while (rest != 0);
    if (V < 0) text.chars[0] = '-';
    return text;
  }
  static constexpr FixedText<Length()> value = Make();
};

// A string in Lua quotes: double quotes, or single ones when the string holds
// a double quote; backslashes and the quote itself escaped.
template <const char* S>
struct QuotedText {
  static constexpr char Quote() {
    for (const char* c = S; *c; ++c) {
      if (*c == '"') return '\'';
    }
    return '"';
  }
  static constexpr bool Escaped(char c) { return c == '\\' || c == Quote(); }
  static constexpr size_t Length() {
    size_t length = 2;
    for (const char* c = S; *c; ++c) length += Escaped(*c) ? 2 : 1;
    return length;
  }
  static constexpr FixedText<Length()> Make() {
    FixedText<Length()> text{};
    size_t at = 0;
    text.chars[at++] = Quote();
    for (const char* c = S; *c; ++c) {
      if (Escaped(*c)) text.chars[at++] = '\\';
      text.chars[at++] = *c;
    }
    text.chars[at] = Quote();
    return text;
  }
  static constexpr FixedText<Length()> value = Make();
};

// Probe arguments that tell which argument an argument-dependent failure
// answers: two sets of distinct values per parameter type.
inline constexpr char kProbeChars[64] = {};

template <typename T>
constexpr T Probe(size_t index, size_t set) {
  if constexpr (std::is_same_v<T, int>) {
    return static_cast<int>(1000 * (set + 1) + index);
  } else if constexpr (std::is_same_v<T, double>) {
    return 1000.5 * static_cast<double>(set + 1) + static_cast<double>(index);
  } else if constexpr (std::is_same_v<T, const char*>) {
    return kProbeChars + 32 * set + index;
  } else {
    return T{};
  }
}

template <typename T, typename R>
constexpr bool IsProbe(R result, size_t index, size_t set) {
  if constexpr (std::is_same_v<T, R> && !std::is_same_v<T, bool>) {
    return result == Probe<T>(index, set);
  } else {
    return false;
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

  // The index of the argument an argument-dependent failure answers, found by
  // calling it at compile time (so such a failure is a constexpr function);
  // -1 when it answers none of them, and for a constant failure.
  template <std::size_t... I>
  static constexpr int FailureArgument(std::index_sequence<I...>) {
    if constexpr (std::is_invocable_r_v<R, decltype(Failure), A...>) {
      static_assert(sizeof...(A) < 32, "too many arguments to probe");
      constexpr R first = Failure(Probe<A>(I, 0)...);
      constexpr R second = Failure(Probe<A>(I, 1)...);
      int found = -1;
      ((found = found < 0 && IsProbe<A>(first, I, 0) && IsProbe<A>(second, I, 1) ? static_cast<int>(I) : found),
       ...);
      return found;
    } else {
      return -1;
    }
  }

  static constexpr int FailureArgumentIndex() { return FailureArgument(std::index_sequence_for<A...>{}); }

  static constexpr const char* FailureText() {
    using F = decltype(Failure);
    if constexpr (std::is_void_v<R> || std::is_invocable_r_v<R, F, A...>) {
      return nullptr;
    } else if constexpr (std::is_same_v<R, bool>) {
      return static_cast<bool>(Failure) ? "true" : "false";
    } else if constexpr (std::is_same_v<R, int>) {
      return IntegerText<static_cast<int>(Failure)>::value.chars;
    } else if constexpr (std::is_same_v<F, std::nullptr_t>) {
      return "null";
    } else {
      static_assert(std::is_same_v<F, const char*>, "unsupported failure value");
      return QuotedText<Failure>::value.chars;  // a named text; a null failure is written nullptr
    }
  }

  static std::string ArgTypes() {
    std::string types;
    ((types += types.empty() ? "" : ",", types += TypeWord<A>::text), ...);
    return types;
  }
};

}  // namespace detail

// One table entry: the typed function, its failure value (NoFailure::value
// for a function without a result; a constexpr function of the same
// arguments for a failure that depends on them), the public name, the
// argument names and the help text; for functions with double arguments,
// what a null double pointer stands for.
template <auto Fn, auto Failure, typename NullDouble = NullDoubleIsZero>
constexpr ApiSpec Api(const char* publicName, const char* argNames, const char* help) {
  using E = detail::Entry<Fn, Failure, NullDouble>;
  if (detail::CountNames(argNames) != E::kArity) throw "argument names do not match the parameters";
  return ApiSpec{publicName, argNames, help, E::kReturnWord, &E::ArgTypes, &E::TypedAddress, &E::Vararg,
                 E::FailureText(), E::FailureArgumentIndex()};
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
