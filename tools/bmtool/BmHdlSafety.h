// BmHdlSafety.h: names and values that the Verilog stub and the SystemVerilog wrapper would write in a
// form that real HDL tools reject or read otherwise.
#pragma once

#include "msg/ComMsgMgrInstance.h"

#include <string>
#include <vector>

class HABMBlock;

namespace bmtool {

/// The hazards, each with its own message id "HDL-<n>" outside the library's catalogue ids.
enum HdlHazard : int {
  HDL_KEYWORD = 1,        ///< a name that is a Verilog or SystemVerilog reserved word
  HDL_ILLEGAL_NAME = 2,   ///< a name that is no identifier ("x-y", "3abc", "a.b", "a b", "")
  HDL_ARRAY_NAME = 3,     ///< a port or generic named like an array element ("data[3]")
  HDL_SHARED_PORT = 4,    ///< a port mapped by two AXI interfaces of the wrapper
  HDL_PHANTOM_PORT = 5,   ///< a phantom port that the wrapper keeps flat, with no direction word
  HDL_WIRE_BOUNDS = 6,    ///< a wire port with bounds: 1 bit in the stub, the bounds in the wrapper
  HDL_TDATA_WIDTH = 7,    ///< an AXI4-Stream TDATA width that is no multiple of 8
  HDL_QUOTED_TEXT = 8,    ///< a double quote, newline or NUL in text the stub writes between quotes
  HDL_EMPTY_GENERIC = 9,  ///< a generic without a value
  HDL_CONTROL_NAME = 10,  ///< a newline or NUL in a name
};

/// Adds one warning for each hazard of `block` and of every block below it, block by block from the top,
/// in the form of the checker's findings: the module name, then a text that names the object by its
/// path and says what the tools make of it. Interfaces are judged as `bmtool wrapper` presents them, so
/// their empty AXI abstraction definitions are filled first.
void findHdlHazards(HABMBlock const& block, std::vector<ComMsgMgrInstance>& findings);

/// `text` with newlines, NULs and other control characters written as escapes ("\n", "\0", "\x1b"), so
/// that a name prints on one line.
std::string escapeControls(std::string const& text);

}  // namespace bmtool
