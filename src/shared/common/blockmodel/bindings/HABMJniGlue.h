// HABMJniGlue.h: the one pattern every JNI entry point of the block model follows. Arguments come in
// (handles, strings, booleans, enumeration values), the wrapped function runs inside the exception guard,
// and the result goes out (handle, string, number). An entry point is one HABM_JNI_ENTRY line; the JNI
// parameter types are derived from the wrapped function, so the compiler checks them against the
// declarations javac generates.
#pragma once

#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMNocInterface.h"
#include "exception/HEXAll.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <jni.h>
#include <new>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

namespace habm_jni {

// Java classes the guard throws.
inline constexpr char const* COMMAND_FAILED = "ui/frmwork/cmd/CommandFailedException";
inline constexpr char const* OUT_OF_MEMORY = "ui/frmwork/COutOfMemoryException";
inline constexpr char const* NULL_POINTER = "java/lang/NullPointerException";
inline constexpr char const* ILLEGAL_ARGUMENT = "java/lang/IllegalArgumentException";

/// Throws a new `className` into Java, built with its constructor from one string. Never throws itself;
/// when even that fails, the JVM's own exception (out of memory, class not found) is pending instead.
void throwJava(JNIEnv* env, char const* className, std::string_view text) noexcept;
/// The UTF-8 text of a Java string that is not null; empty with a Java exception pending when the JVM
/// cannot hand out its characters.
std::string fromJava(JNIEnv* env, jstring text);
/// A new Java string; null with a Java exception pending when the JVM cannot make one.
jstring toJava(JNIEnv* env, std::string const& text);

template <class T>
T* fromHandle(jlong handle) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is an address by definition.
  return reinterpret_cast<T*>(static_cast<std::intptr_t>(handle));
}
template <class T>
jlong toHandle(T const* object) {
  return static_cast<jlong>(reinterpret_cast<std::intptr_t>(const_cast<T*>(object)));
}

// The parameters and result of a wrapped function.
template <class F>
struct Signature;
template <class R, class... A>
struct Signature<R (*)(A...)> {
  using Result = R;
  using Params = std::tuple<A...>;
};

/// The wrapped function F: a plain or static function.
template <auto F>
struct Function : Signature<decltype(F)> {
  template <class... A>
  static decltype(auto) call(A&&... args) {
    return F(std::forward<A>(args)...);
  }
};

// A member M called on a `C`, its object being the first parameter. M may belong to a base of C: the
// handle Java holds is the address of a `C`, which need not be the address of the base.
template <class C, class M>
struct MemberSignature;
template <class C, class B, class R, class... A>
struct MemberSignature<C, R (B::*)(A...)> {
  using Result = R;
  using Params = std::tuple<C&, A...>;
};
template <class C, class B, class R, class... A>
struct MemberSignature<C, R (B::*)(A...) const> {
  using Result = R;
  using Params = std::tuple<C const&, A...>;
};

/// The member M of class C (or of a base of C).
template <class C, auto M>
struct Member : MemberSignature<C, decltype(M)> {
  template <class Self, class... A>
  static decltype(auto) call(Self& self, A&&... args) {
    return std::invoke(M, self, std::forward<A>(args)...);
  }
};

/// Picks the const form of a member that has a const and a non-const form.
template <class C, class R, class... A>
constexpr auto constMember(R (C::*member)(A...) const) {
  return member;
}

/// The highest value of an enumeration that crosses from Java; any other integer becomes it.
template <class E>
struct EnumLast;
template <>
struct EnumLast<HABMNocInterface::NocMode> {
  static constexpr auto value = HABMNocInterface::MODE_UNKNOWN;
};
template <>
struct EnumLast<HABMNocInterface::NocProtocol> {
  static constexpr auto value = HABMNocInterface::PROTOCOL_UNKNOWN;
};

/// How the null-reference message names a value type passed by reference.
template <class T>
struct TypeName;
template <>
struct TypeName<std::set<HABMAddrAperture>> {
  static constexpr char const* value = "HABMAddrApertures";
};

template <class T>
using Bare = std::remove_cv_t<std::remove_reference_t<T>>;

// In<P, Self>: how a JNI argument becomes the parameter P. `Held` lives for the call; `take` fills it and
// returns false after raising a Java exception (the call then does not happen); `give` passes it on.
// `Self` marks the object a member is called on, whose handle is used unchecked.
template <class P, bool Self, class = void>
struct In;

template <class P, bool Self>
struct In<P, Self, std::enable_if_t<std::is_same_v<Bare<P>, std::string>>> {
  using Jni = jstring;
  using Held = std::string;
  static bool take(JNIEnv* env, jstring text, std::string& held) {
    if (text == nullptr) {
      throwJava(env, NULL_POINTER, "null std::string");
      return false;
    }
    held = fromJava(env, text);
    return env->ExceptionCheck() == JNI_FALSE;
  }
  static std::string& give(std::string& held) { return held; }
};

template <class P, bool Self>
struct In<P, Self, std::enable_if_t<std::is_same_v<Bare<P>, bool>>> {
  using Jni = jboolean;
  using Held = bool;
  static bool take(JNIEnv*, jboolean value, bool& held) {
    held = value != JNI_FALSE;
    return true;
  }
  static bool give(bool held) { return held; }
};

template <class P, bool Self>
struct In<P, Self, std::enable_if_t<std::is_same_v<Bare<P>, unsigned int>>> {
  using Jni = jint;
  using Held = unsigned int;
  static bool take(JNIEnv* env, jint value, unsigned int& held) {
    if (value < 0) {
      throwJava(env, ILLEGAL_ARGUMENT, "negative value for an unsigned argument");
      return false;
    }
    held = static_cast<unsigned int>(value);
    return true;
  }
  static unsigned int give(unsigned int held) { return held; }
};

template <class P, bool Self>
struct In<P, Self, std::enable_if_t<std::is_enum_v<Bare<P>>>> {
  using Jni = jint;
  using Held = Bare<P>;
  static bool take(JNIEnv*, jint value, Held& held) {
    constexpr auto last = static_cast<jint>(EnumLast<Held>::value);
    held = static_cast<Held>(value >= 0 && value <= last ? value : last);
    return true;
  }
  static Held give(Held held) { return held; }
};

template <class P, bool Self>
struct In<P, Self, std::enable_if_t<std::is_pointer_v<P>>> {
  using Jni = jlong;
  using Held = P;
  static bool take(JNIEnv*, jlong handle, P& held) {
    held = fromHandle<std::remove_pointer_t<P>>(handle);
    return true;
  }
  static P give(P held) { return held; }
};

template <class P, bool Self>
struct In<P, Self,
          std::enable_if_t<std::is_reference_v<P> && std::is_class_v<Bare<P>> &&
                           !std::is_same_v<Bare<P>, std::string>>> {
  using Jni = jlong;
  using Held = std::remove_reference_t<P>*;
  static bool take(JNIEnv* env, jlong handle, Held& held) {
    held = fromHandle<std::remove_reference_t<P>>(handle);
    if constexpr (!Self) {
      if (held == nullptr) {
        throwJava(env, NULL_POINTER, std::string(TypeName<Bare<P>>::value) + " const & reference is null");
        return false;
      }
    }
    return true;
  }
  static P give(Held held) { return *held; }
};

// Out<R>: how a result R goes to Java. A pointer or a reference goes out as the object's handle; a
// container or a value type by value is moved to a new heap object that Java owns (handle 0 when that
// allocation fails).
template <class R, class = void>
struct Out;

template <>
struct Out<void> {
  using Jni = void;
};

template <class R>
struct Out<R, std::enable_if_t<std::is_same_v<Bare<R>, std::string>>> {
  using Jni = jstring;
  static jstring out(JNIEnv* env, std::string const& result) { return toJava(env, result); }
};

template <class R>
struct Out<R, std::enable_if_t<std::is_same_v<R, bool>>> {
  using Jni = jboolean;
  static jboolean out(JNIEnv*, bool result) { return result ? JNI_TRUE : JNI_FALSE; }
};

template <class R>
struct Out<R, std::enable_if_t<std::is_enum_v<R> || std::is_same_v<R, std::int32_t>>> {
  using Jni = jint;
  static jint out(JNIEnv*, R result) { return static_cast<jint>(result); }
};

template <class R>
struct Out<R, std::enable_if_t<std::is_same_v<R, std::size_t>>> {
  using Jni = jlong;
  static jlong out(JNIEnv*, std::size_t result) { return static_cast<jlong>(result); }
};

template <class R>
struct Out<R, std::enable_if_t<std::is_pointer_v<R>>> {
  using Jni = jlong;
  static jlong out(JNIEnv*, R result) { return toHandle(result); }
};

template <class R>
struct Out<R, std::enable_if_t<std::is_reference_v<R> && !std::is_same_v<Bare<R>, std::string>>> {
  using Jni = jlong;
  static jlong out(JNIEnv*, R result) { return toHandle(&result); }
};

template <class R>
struct Out<R, std::enable_if_t<std::is_class_v<R> && !std::is_same_v<R, std::string>>> {
  using Jni = jlong;
  static jlong out(JNIEnv*, R&& result) { return toHandle(new (std::nothrow) R(std::move(result))); }
};

template <class F>
using Params = typename F::Params;
template <class F>
using Result = typename F::Result;
/// The JNI type of the I-th parameter of F.
template <class F, std::size_t I>
using JniParam = typename In<std::tuple_element_t<I, Params<F>>, I == 0>::Jni;
/// The JNI type of F's result.
template <class F>
using JniResult = typename Out<Result<F>>::Jni;

/// Runs `body` and turns whatever it throws into a Java exception; the result is then zero.
template <class Body>
auto guard(JNIEnv* env, Body&& body) noexcept -> decltype(body()) {
  try {
    return body();
  } catch (HEXAll const& e) {
    ComMsgMgrInstance const* message = e.getMessage();
    throwJava(env, COMMAND_FAILED, message != nullptr ? std::string_view(message->getMessage()) : "");
  } catch (std::bad_alloc const&) {
    throwJava(env, OUT_OF_MEMORY, "Out of memory");
  } catch (std::exception const& e) {
    throwJava(env, COMMAND_FAILED, e.what());
  } catch (...) {
    throwJava(env, COMMAND_FAILED, "Unknown exception occurred");
  }
  if constexpr (!std::is_void_v<decltype(body())>) {
    return {};
  }
}

template <class F, std::size_t... I, class... J>
JniResult<F> call(JNIEnv* env, std::index_sequence<I...>, J... args) {
  [[maybe_unused]] std::tuple<typename In<std::tuple_element_t<I, Params<F>>, I == 0>::Held...> held;
  // Left to right, stopping at the first argument that raised a Java exception.
  bool const taken =
      (In<std::tuple_element_t<I, Params<F>>, I == 0>::take(env, args, std::get<I>(held)) && ...);
  if constexpr (std::is_void_v<Result<F>>) {
    if (taken) {
      F::call(In<std::tuple_element_t<I, Params<F>>, I == 0>::give(std::get<I>(held))...);
    }
  } else {
    if (!taken) {
      return {};
    }
    return Out<Result<F>>::out(
        env, F::call(In<std::tuple_element_t<I, Params<F>>, I == 0>::give(std::get<I>(held))...));
  }
}

/// The body of every entry point: `N` JNI arguments for F's parameters, in order.
template <class F, std::size_t N, class... J>
JniResult<F> invoke(JNIEnv* env, J... args) noexcept {
  static_assert(N == std::tuple_size_v<Params<F>>, "the entry point's argument count does not match");
  return guard(env, [&] { return call<F>(env, std::index_sequence_for<J...>{}, args...); });
}

}  // namespace habm_jni

// The JNI parameters of an entry point that wraps F with N arguments.
#define HABM_JNI_PARAMS_0(F)
#define HABM_JNI_PARAMS_1(F) , habm_jni::JniParam<F, 0> a0
#define HABM_JNI_PARAMS_2(F) HABM_JNI_PARAMS_1(F), habm_jni::JniParam<F, 1> a1
#define HABM_JNI_PARAMS_3(F) HABM_JNI_PARAMS_2(F), habm_jni::JniParam<F, 2> a2
#define HABM_JNI_PARAMS_4(F) HABM_JNI_PARAMS_3(F), habm_jni::JniParam<F, 3> a3
#define HABM_JNI_ARGS_0
#define HABM_JNI_ARGS_1 , a0
#define HABM_JNI_ARGS_2 HABM_JNI_ARGS_1, a1
#define HABM_JNI_ARGS_3 HABM_JNI_ARGS_2, a2
#define HABM_JNI_ARGS_4 HABM_JNI_ARGS_3, a3

/// Defines the exported JNI function SYMBOL, which calls the wrapped function (a habm_jni::Function or
/// habm_jni::Member type) with N arguments. The type is named once, in a namespace of its own, since it
/// may hold commas.
#define HABM_JNI_ENTRY(SYMBOL, N, ...)                                             \
  namespace habm_jni_entry {                                                       \
  using SYMBOL = __VA_ARGS__;                                                      \
  }                                                                                \
  extern "C" JNIEXPORT habm_jni::JniResult<habm_jni_entry::SYMBOL> JNICALL SYMBOL( \
      JNIEnv* env, jclass HABM_JNI_PARAMS_##N(habm_jni_entry::SYMBOL)) {           \
    return habm_jni::invoke<habm_jni_entry::SYMBOL, N>(env HABM_JNI_ARGS_##N);     \
  }
