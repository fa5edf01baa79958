// HABMJniGlue.cpp: strings and exceptions across the JNI boundary.
#include "blockmodel/bindings/HABMJniGlue.h"

#include "i18n/HI18N.h"

#include <cstddef>
#include <limits>
#include <stdexcept>
#include <vector>

namespace habm_jni {

void throwJava(JNIEnv* env, char const* className, std::string_view text) noexcept {
  jclass const type = env->FindClass(className);
  if (type == nullptr) {
    return;
  }
  jmethodID const constructor = env->GetMethodID(type, "<init>", "(Ljava/lang/String;)V");
  jstring message = nullptr;
  try {
    message = constructor != nullptr ? toJava(env, std::string(text)) : nullptr;
  } catch (...) {
    // No memory for the text: the exception goes without it, through the plain ASCII path.
    env->ThrowNew(type, nullptr);
  }
  if (message != nullptr) {
    auto const exception = static_cast<jthrowable>(env->NewObject(type, constructor, message));
    if (exception != nullptr) {
      env->Throw(exception);
    }
    env->DeleteLocalRef(message);
  }
  env->DeleteLocalRef(type);
}

std::string fromJava(JNIEnv* env, jstring text) {
  jsize const length = env->GetStringLength(text);
  jchar const* chars = env->GetStringChars(text, nullptr);
  if (chars == nullptr) {
    return {};
  }
  // jchar and char16_t are distinct types: copy the units rather than alias them. The characters go back
  // to the JVM before anything else can throw.
  std::u16string units;
  try {
    units.assign(chars, chars + length);
  } catch (...) {
    env->ReleaseStringChars(text, chars);
    throw;
  }
  env->ReleaseStringChars(text, chars);
  return HI18N::convert(units);
}

jstring toJava(JNIEnv* env, std::string const& text) {
  std::u16string const units = HI18N::convert(text);
  if (units.size() > static_cast<std::size_t>(std::numeric_limits<jsize>::max())) {
    throw std::length_error("string too long for Java");
  }
  std::vector<jchar> const chars(units.begin(), units.end());
  return env->NewString(chars.data(), static_cast<jsize>(chars.size()));
}

}  // namespace habm_jni
