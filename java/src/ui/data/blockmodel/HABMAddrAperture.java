// HABMAddrAperture.java: the Java view of an address aperture (a base and a range).
package ui.data.blockmodel;

import ui.frmwork.COutOfMemoryException;

/** A base address and a range that Java received by value. The native copy is never freed. */
public final class HABMAddrAperture extends NativeObject {
  HABMAddrAperture(long handle) {
    super(handle, null);
    if (handle == 0) {
      throw new COutOfMemoryException("Out of memory");
    }
  }

  public HABMAddrValue getBaseAddress() {
    return new HABMAddrValue(blockmodeli.HABMAddrAperture_getBaseAddress(handle));
  }

  public HABMAddrValue getRange() {
    return new HABMAddrValue(blockmodeli.HABMAddrAperture_getRange(handle));
  }

  /** base + range - 1; the base for an empty aperture. */
  public HABMAddrValue getHighAddress() {
    return new HABMAddrValue(blockmodeli.HABMAddrAperture_getHighAddress(handle));
  }

  /** "0x1000[4K]", the base zero-padded to `bits`. */
  public String getBaseAbrvString(int bits) {
    return blockmodeli.HABMAddrAperture_getBaseAbrvString(handle, bits);
  }

  /** "0x1000:0x1FFF", both zero-padded to `bits`. */
  public String getBaseHighString(int bits) {
    return blockmodeli.HABMAddrAperture_getBaseHighString(handle, bits);
  }

  @Override
  public String toString() {
    return getBaseAbrvString(0);
  }
}
