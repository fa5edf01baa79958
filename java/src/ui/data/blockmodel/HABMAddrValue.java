// HABMAddrValue.java: the Java view of a 128-bit address value.
package ui.data.blockmodel;

import ui.frmwork.COutOfMemoryException;

/** A 128-bit address that Java received by value. The native copy is never freed. */
public final class HABMAddrValue extends NativeObject {
  HABMAddrValue(long handle) {
    super(handle, null);
    if (handle == 0) {
      throw new COutOfMemoryException("Out of memory");
    }
  }

  /** "0x1_0000": hex digits in groups of four, zero-padded to `bits`. */
  public String getPrettyHexStringValue(int bits) {
    return blockmodeli.HABMAddrValue_getPrettyHexStringValue(handle, bits);
  }

  @Override
  public String toString() {
    return getPrettyHexStringValue(0);
  }
}
