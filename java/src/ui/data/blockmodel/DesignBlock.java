// DesignBlock.java: the Java view of a block of the design (HABMBlock).
package ui.data.blockmodel;

/**
 * A block: a module and an instance of it, with its sub-blocks and NoC objects. The native tree owns the
 * block; the view is valid while the block lives. Where the native model answers "none", these methods
 * return null.
 */
public final class DesignBlock extends NativeObject {
  private DesignBlock(long handle) {
    super(handle, null);
  }

  /** The view of the block at a native address handed over by host code; null for 0. */
  public static DesignBlock fromHandle(long handle) {
    return handle == 0 ? null : new DesignBlock(handle);
  }

  public String getInstanceName() {
    return blockmodeli.DesignBlock_getInstanceName(handle);
  }

  /** "/" for a top block, else "/u0/u1". */
  public String getInstancePath() {
    return blockmodeli.DesignBlock_getInstancePath(handle);
  }

  public String getModuleName() {
    return blockmodeli.DesignBlock_getModuleName(handle);
  }

  public String getModuleVlnv() {
    return blockmodeli.DesignBlock_getModuleVlnv(handle);
  }

  /** The parent, or null for a top block. */
  public DesignBlock getParent() {
    return fromHandle(blockmodeli.DesignBlock_getParent(handle));
  }

  /** Whether the contents may be seen from above. */
  public boolean getTransparent() {
    return blockmodeli.DesignBlock_getTransparent(handle);
  }

  /** True when every ancestor is transparent. */
  public boolean isVisible() {
    return blockmodeli.DesignBlock_isVisible(handle);
  }

  /** True for a run-time swapped block. */
  public boolean isBlockRsw() {
    return blockmodeli.DesignBlock_isBlockRsw(handle);
  }

  /** The nearest run-time swapped ancestor, or null. */
  public DesignBlock getRswAncestor() {
    return fromHandle(blockmodeli.DesignBlock_getRswAncestor(handle));
  }

  public DesignBlock getSubBlock(String instanceName) {
    return fromHandle(blockmodeli.DesignBlock_getSubBlock(handle, instanceName));
  }

  public DesignBlockVector getSubBlocks() {
    return DesignBlockVector.owned(blockmodeli.DesignBlock_getSubBlocks(handle));
  }

  /** The block at "a/b" below this one (with `recursive`, at any depth for a plain name), or null. */
  public DesignBlock findSubBlock(String path, boolean recursive) {
    return fromHandle(blockmodeli.DesignBlock_findSubBlock(handle, path, recursive));
  }

  /** Sub-blocks whose path matches the wildcard pattern. */
  public DesignBlockVector findSubBlocks(String pattern, boolean recursive) {
    return DesignBlockVector.owned(blockmodeli.DesignBlock_findSubBlocks(handle, pattern, recursive));
  }

  public NocInterface getNocInterface(String name) {
    return NocInterface.fromHandle(blockmodeli.DesignBlock_getNocInterface(handle, name));
  }

  public NocInterfaceVector getNocInterfaces(boolean excludeIni) {
    return NocInterfaceVector.owned(blockmodeli.DesignBlock_getNocInterfaces(handle, excludeIni));
  }

  public boolean hasNocInterfaces(boolean excludeIni) {
    return blockmodeli.DesignBlock_hasNocInterfaces(handle, excludeIni);
  }

  public NocConnection getNocConnection(String name) {
    return NocConnection.fromHandle(blockmodeli.DesignBlock_getNocConnection(handle, name));
  }

  public NocConnectionVector getNocConnections(boolean excludeIni) {
    return NocConnectionVector.owned(blockmodeli.DesignBlock_getNocConnections(handle, excludeIni));
  }

  public boolean hasNocConnections(boolean excludeIni) {
    return blockmodeli.DesignBlock_hasNocConnections(handle, excludeIni);
  }

  /** The NoC connection at "name" or "sub/path/name", or null. */
  public NocConnection findNocConnection(String path, boolean recursive) {
    return NocConnection.fromHandle(blockmodeli.DesignBlock_findNocConnection(handle, path, recursive));
  }

  /** NoC connections whose path matches the wildcard pattern (all for ""). */
  public NocConnectionVector findNocConnections(String pattern, boolean recursive, boolean excludeIni) {
    return NocConnectionVector.owned(
        blockmodeli.DesignBlock_findNocConnections(handle, pattern, recursive, excludeIni));
  }

  @Override
  public String toString() {
    return getInstancePath();
  }
}
