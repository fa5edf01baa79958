// NocPath.java: the Java view of a NoC path (HABMNocPath).
package ui.data.blockmodel;

/**
 * A route through the network as seen from a block: its chain of links and the interfaces it meets. A
 * path is computed, not stored: it is valid while its set lives and the design does not change.
 */
public final class NocPath extends NativeObject {
  private NocPath(long handle, Object owner) {
    super(handle, owner);
  }

  static NocPath of(long handle, Object owner) {
    return handle == 0 ? null : new NocPath(handle, owner);
  }

  /** Every path of the block, by name; empty for null. */
  public static NocPathSet createNocPaths(DesignBlock block) {
    return new NocPathSet(blockmodeli.NocPath_createNocPaths(handleOf(block)));
  }

  /** The interface paths joined by "->". */
  public String getName() {
    return blockmodeli.NocPath_getName(handle);
  }

  /** The chain of links, from the source; part of the path. */
  public NocConnectionVector getNocConnections() {
    return new NocConnectionVector(blockmodeli.NocPath_getNocConnections(handle), false, this);
  }

  /** Every interface of the chain once, in order; part of the path. */
  public NocInterfaceVector getNocInterfaces() {
    return new NocInterfaceVector(blockmodeli.NocPath_getNocInterfaces(handle), false, this);
  }

  /** The virtual interfaces, in order; part of the path. */
  public NocInterfaceVector getVNocInterfaces() {
    return new NocInterfaceVector(blockmodeli.NocPath_getVNocInterfaces(handle), false, this);
  }

  /** The first non-virtual source interface, or null. */
  public NocInterface getNmuInterface() {
    return NocInterface.fromHandle(blockmodeli.NocPath_getNmuInterface(handle));
  }

  /** The first non-virtual target interface, or null. */
  public NocInterface getNsuInterface() {
    return NocInterface.fromHandle(blockmodeli.NocPath_getNsuInterface(handle));
  }

  /** The first interface, or null. */
  public NocInterface getSourceInterface() {
    return NocInterface.fromHandle(blockmodeli.NocPath_getSourceInterface(handle));
  }

  /** The last interface, or null. */
  public NocInterface getTargetInterface() {
    return NocInterface.fromHandle(blockmodeli.NocPath_getTargetInterface(handle));
  }

  /** The first link that holds traffic parameters, or null. */
  public NocConnection getPrimaryConnection() {
    return NocConnection.fromHandle(blockmodeli.NocPath_getPrimaryConnection(handle));
  }

  /** True when the path has an NMU, an NSU and a primary link. */
  public boolean isCompletePath() {
    return blockmodeli.NocPath_isCompletePath(handle);
  }

  @Override
  public String toString() {
    return getName();
  }
}
