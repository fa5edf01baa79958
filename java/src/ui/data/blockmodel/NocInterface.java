// NocInterface.java: the Java view of a NoC interface (HABMNocInterface).
package ui.data.blockmodel;

/** An attachment point of a block to the network on chip; the block owns it. */
public final class NocInterface extends NativeObject {
  /** Where traffic enters (NMU) or leaves (NSU) the network; the virtual forms stand for one elsewhere. */
  public enum NocMode {
    NMU(blockmodeli.get_NocInterface_NocMode_NMU()),
    NSU(blockmodeli.get_NocInterface_NocMode_NSU()),
    VNMU(blockmodeli.get_NocInterface_NocMode_VNMU()),
    VNSU(blockmodeli.get_NocInterface_NocMode_VNSU()),
    UNKNOWN(blockmodeli.get_NocInterface_NocMode_UNKNOWN());

    /** The native value. */
    public final int value;

    NocMode(int value) {
      this.value = value;
    }

    static NocMode of(int value) {
      for (NocMode mode : values()) {
        if (mode.value == value) {
          return mode;
        }
      }
      return UNKNOWN;
    }
  }

  /** What the traffic is: memory-mapped (AXIMM) or streamed (AXIS). */
  public enum NocProtocol {
    AXIMM(blockmodeli.get_NocInterface_NocProtocol_AXIMM()),
    AXIS(blockmodeli.get_NocInterface_NocProtocol_AXIS()),
    UNKNOWN(blockmodeli.get_NocInterface_NocProtocol_UNKNOWN());

    /** The native value. */
    public final int value;

    NocProtocol(int value) {
      this.value = value;
    }

    static NocProtocol of(int value) {
      for (NocProtocol protocol : values()) {
        if (protocol.value == value) {
          return protocol;
        }
      }
      return UNKNOWN;
    }
  }

  private NocInterface(long handle) {
    super(handle, null);
  }

  static NocInterface fromHandle(long handle) {
    return handle == 0 ? null : new NocInterface(handle);
  }

  /** The mode of a text such as "nmu", in any case; UNKNOWN for any other text. */
  public static NocMode encodeNocMode(String text) {
    return NocMode.of(blockmodeli.NocInterface_encodeNocMode(text));
  }

  /** The text of a mode; empty for UNKNOWN. */
  public static String decodeNocMode(NocMode mode) {
    return blockmodeli.NocInterface_decodeNocMode(mode.value);
  }

  /** The protocol of a text such as "aximm", in any case; UNKNOWN for any other text. */
  public static NocProtocol encodeNocProtocol(String text) {
    return NocProtocol.of(blockmodeli.NocInterface_encodeNocProtocol(text));
  }

  /** The text of a protocol; empty for UNKNOWN. */
  public static String decodeNocProtocol(NocProtocol protocol) {
    return blockmodeli.NocInterface_decodeNocProtocol(protocol.value);
  }

  public String getName() {
    return blockmodeli.NocInterface_getName(handle);
  }

  /** The block's path and the name ("/u0/S_AXI_nsu"). */
  public String getPath() {
    return blockmodeli.NocInterface_getPath(handle);
  }

  public DesignBlock getParent() {
    return DesignBlock.fromHandle(blockmodeli.NocInterface_getParent(handle));
  }

  public NocMode getNocMode() {
    return NocMode.of(blockmodeli.NocInterface_getNocMode(handle));
  }

  public NocProtocol getNocProtocol() {
    return NocProtocol.of(blockmodeli.NocInterface_getNocProtocol(handle));
  }

  /** The placement, "A" or "A:B"; empty when unset. */
  public String getLocation() {
    return blockmodeli.NocInterface_getLocation(handle);
  }

  /** The assigned destination id; -1 for none. */
  public int getDestId() {
    return blockmodeli.NocInterface_getDestId(handle);
  }

  public boolean isVisible() {
    return blockmodeli.NocInterface_isVisible(handle);
  }

  /** The parameter of that name, or null. */
  public HABMParameter getParameter(String name) {
    return HABMParameter.fromHandle(blockmodeli.NocInterface_getParameter(handle, name));
  }

  /** The interface's own apertures: they change with it. */
  public HABMAddrApertures getApertures() {
    return new HABMAddrApertures(blockmodeli.NocInterface_getApertures(handle), this);
  }

  /** Replaces the apertures by a copy of `apertures`. */
  public void setApertures(HABMAddrApertures apertures) {
    blockmodeli.NocInterface_setApertures(handle, handleOf(apertures));
  }

  /** The connections that drive this interface, found on its block and every block above. */
  public NocConnectionVector getSourceConnections() {
    return NocConnectionVector.owned(blockmodeli.NocInterface_getSourceConnections(handle));
  }

  /** The connections this interface drives. */
  public NocConnectionVector getTargetConnections() {
    return NocConnectionVector.owned(blockmodeli.NocInterface_getTargetConnections(handle));
  }

  /** The resolved far ends of the driving connections. */
  public NocInterfaceVector getSourceInterfaces() {
    return NocInterfaceVector.owned(blockmodeli.NocInterface_getSourceInterfaces(handle));
  }

  /** The resolved far ends of the driven connections. */
  public NocInterfaceVector getTargetInterfaces() {
    return NocInterfaceVector.owned(blockmodeli.NocInterface_getTargetInterfaces(handle));
  }

  @Override
  public String toString() {
    return getPath();
  }
}
