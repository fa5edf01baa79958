// NocConnection.java: the Java view of a NoC connection (HABMNocConnection).
package ui.data.blockmodel;

/** A directed link between two NoC interfaces, drawn in a block; the block owns it. */
public final class NocConnection extends NativeObject {
  private NocConnection(long handle) {
    super(handle, null);
  }

  static NocConnection fromHandle(long handle) {
    return handle == 0 ? null : new NocConnection(handle);
  }

  public String getName() {
    return blockmodeli.NocConnection_getName(handle);
  }

  /** The block the link is drawn in. */
  public DesignBlock getParent() {
    return DesignBlock.fromHandle(blockmodeli.NocConnection_getParent(handle));
  }

  public String getPath() {
    return blockmodeli.NocConnection_getPath(handle);
  }

  /** The source interface's path, relative to the block or (`absolute`) from the root. */
  public String getSourcePath(boolean absolute) {
    return blockmodeli.NocConnection_getSourcePath(handle, absolute);
  }

  /** The target interface's path, relative to the block or (`absolute`) from the root. */
  public String getTargetPath(boolean absolute) {
    return blockmodeli.NocConnection_getTargetPath(handle, absolute);
  }

  /** True for a link from a source to a target interface: the one that holds traffic parameters. */
  public boolean isPrimary() {
    return blockmodeli.NocConnection_isPrimary(handle);
  }

  public boolean isVisible() {
    return blockmodeli.NocConnection_isVisible(handle);
  }

  /** The parameter of that name, or null. */
  public HABMParameter getParameter(String name) {
    return HABMParameter.fromHandle(blockmodeli.NocConnection_getParameter(handle, name));
  }

  @Override
  public String toString() {
    return getPath();
  }
}
