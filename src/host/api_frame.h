// The frame every module publishes its script functions through. One entry
// per function carries the typed function, a vararg twin generated from its
// signature, and the definition text ReaScript reads; the module lists its
// entries in one table, in registration order.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZOLVA {

// What a vararg twin substitutes when the host passes a null double pointer.
struct NullDoubleIsZero {
  static constexpr double value = 0.0;
};
struct NullDoubleIsMinusOne {
  static constexpr double value = -1.0;
};

struct ApiFunction {
  // Keys and definition text stay alive from registration to withdrawal:
  // REAPER up to 6.66 keeps the key pointer and reads it again at exit.
  std::string apiKey;     // "API_" + public name
  std::string varargKey;  // "APIvararg_" + public name
  std::string defKey;     // "APIdef_" + public name
  std::string definition; // four NUL-terminated fields: return, types, names, help
  void* typed;
  void* vararg;
};

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

template <auto Fn>
struct Signature;

template <typename R, typename... A, R (*Fn)(A...)>
struct Signature<Fn> {
  template <typename NullDouble, std::size_t... I>
  static void* Call(void** argv, std::index_sequence<I...>) {
    if constexpr (std::is_void_v<R>) {
      Fn(ReadSlot<A, NullDouble>(argv[I])...);
      return nullptr;
    } else {
      return ResultSlot<R>(Fn(ReadSlot<A, NullDouble>(argv[I])...));
    }
  }

  // The host passes the argument count too; like REAPER's own wrappers, the
  // twin trusts the definition text instead of checking it.
  template <typename NullDouble>
  static void* Vararg(void** argv, int /*argc*/) {
    return Call<NullDouble>(argv, std::index_sequence_for<A...>{});
  }

  static std::string TypeList() {
    std::string types;
    ((types += types.empty() ? "" : ",", types += TypeWord<A>::text), ...);
    return types;
  }

  static const char* ReturnWord() { return TypeWord<R>::text; }
};

ApiFunction MakeApiFunction(const std::string& publicName, const char* returnWord,
                            const std::string& types, const char* argNames, const char* help,
                            void* typed, void* vararg);

}  // namespace detail

// One table entry: the typed function, its public name, argument names
// (comma-separated, as scripts see them), help text and, for functions with
// double arguments, what a null double pointer stands for.
template <auto Fn, typename NullDouble = NullDoubleIsZero>
ApiFunction DefineApi(const std::string& publicName, const char* argNames, const char* help) {
  using Sig = detail::Signature<Fn>;
  void* (*vararg)(void**, int) = &Sig::template Vararg<NullDouble>;
  return detail::MakeApiFunction(publicName, Sig::ReturnWord(), Sig::TypeList(), argNames, help,
                                 reinterpret_cast<void*>(Fn), reinterpret_cast<void*>(vararg));
}

// Registers each entry as "API_", "APIvararg_" and "APIdef_", in table order.
void RegisterApiTable(const std::vector<ApiFunction>& table);

// Withdraws only the "API_" registration of each entry; the vararg and
// definition registrations are deliberately left with the host.
void UnregisterApiTable(const std::vector<ApiFunction>& table);

}  // namespace ZOLVA
