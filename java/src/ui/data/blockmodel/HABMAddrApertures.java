// HABMAddrApertures.java: the apertures of a NoC interface, as one opaque value.
package ui.data.blockmodel;

/**
 * The address apertures of a NoC interface, held by the interface. Java can only pass them on, to
 * {@link NocInterface#setApertures} of the same or another interface.
 */
public final class HABMAddrApertures extends NativeObject {
  HABMAddrApertures(long handle, Object owner) {
    super(handle, owner);
  }
}
