// HABMParameter.java: the Java view of a parameter of a NoC object.
package ui.data.blockmodel;

/** A named text value, owned by its interface or connection. */
public final class HABMParameter extends NativeObject {
  private HABMParameter(long handle) {
    super(handle, null);
  }

  static HABMParameter fromHandle(long handle) {
    return handle == 0 ? null : new HABMParameter(handle);
  }

  public String getName() {
    return blockmodeli.HABMParameter_getName(handle);
  }

  public String getValue() {
    return blockmodeli.HABMParameter_getValue(handle);
  }
}
