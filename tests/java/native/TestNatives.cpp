// TestNatives.cpp: native methods of ui.data.blockmodel.TestNatives, which only the Java tests load. They
// make and free designs, values the 119 entry points cannot make, and exceptions of every kind, all
// through the same glue as the real entry points.
#include "blockmodel/HABMAddrAperture.h"
#include "blockmodel/HABMBlock.h"
#include "blockmodel/bindings/HABMJniGlue.h"
#include "blockmodel/bindings/HABMJniTypes.h"
#include "exception/HEXAll.h"
#include "msg/ComMsgMgr.h"
#include "util/HUTFile.h"

#include <cstdint>
#include <memory>
#include <new>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

HABMBlock* readTopBlock(std::string const& path) {
  return HABMBlock::readTopBlock(HUTFile(path)).release();
}
HABMBlock* createTopBlock(std::string const& module) {
  return HABMBlock::createTopBlock(module).release();
}
HABMBlock* createSubBlock(HABMBlock& parent, std::string const& instance, std::string const& module) {
  return parent.createSubBlock(instance, module, false);
}
void deleteTopBlock(HABMBlock* top) {
  delete top;
}

std::int32_t echoCount = 0;
std::string echo(std::string const& text) {
  ++echoCount;
  return text;
}
std::int32_t echoCalls() {
  return echoCount;
}

std::string utf8Hex(std::string const& text) {
  std::ostringstream out;
  out << std::hex;
  for (char c : text) {
    out << static_cast<unsigned>(static_cast<unsigned char>(c)) << ' ';
  }
  return out.str();
}

void throwHexAll(std::string const& text) {
  throw HEXAll(
      ComMsgMgrInstance::createInstance::eval(1, __FILE__, __LINE__, "test", COM_MSG_ERROR, "%s", text));
}
void throwEmptyHexAll() {
  throw HEXAll();
}
void throwBadAlloc() {
  throw std::bad_alloc();
}
void throwStdException(std::string const& text) {
  throw std::runtime_error(text);
}
void throwUnknown() {
  throw 42;
}

HABMAddrAperture makeAperture(std::string const& text) {
  return HABMAddrAperture(text);
}
/// Apertures from their texts, separated by blanks.
std::set<HABMAddrAperture> makeApertures(std::string const& texts) {
  std::set<HABMAddrAperture> apertures;
  std::istringstream in(texts);
  for (std::string text; in >> text;) {
    apertures.insert(HABMAddrAperture(text));
  }
  return apertures;
}
std::string aperturesText(std::set<HABMAddrAperture> const& apertures) {
  std::string text;
  for (HABMAddrAperture const& aperture : apertures) {
    text += (text.empty() ? "" : " ") + aperture.getBaseAbrvString();
  }
  return text;
}

}  // namespace

using habm_jni::Function;
using ParameterVector = std::vector<HABMParameter*>;

#define TN(NAME, N, ...) HABM_JNI_ENTRY(Java_ui_data_blockmodel_TestNatives_##NAME, N, __VA_ARGS__)

TN(readTopBlock, 1, Function<&readTopBlock>)
TN(createTopBlock, 1, Function<&createTopBlock>)
TN(createSubBlock, 3, Function<&createSubBlock>)
TN(deleteTopBlock, 1, Function<&deleteTopBlock>)
TN(echo, 1, Function<&echo>)
TN(echoCalls, 0, Function<&echoCalls>)
TN(utf8Hex, 1, Function<&utf8Hex>)
TN(throwHexAll, 1, Function<&throwHexAll>)
TN(throwEmptyHexAll, 0, Function<&throwEmptyHexAll>)
TN(throwBadAlloc, 0, Function<&throwBadAlloc>)
TN(throwStdException, 1, Function<&throwStdException>)
TN(throwUnknown, 0, Function<&throwUnknown>)
TN(makeAperture, 1, Function<&makeAperture>)
TN(makeApertures, 1, Function<&makeApertures>)
TN(aperturesText, 1, Function<&aperturesText>)
TN(parameterCount, 1, Function<&habm_jni::size<ParameterVector>>)
TN(deleteParameters, 1, Function<&habm_jni::destroy<ParameterVector>>)
