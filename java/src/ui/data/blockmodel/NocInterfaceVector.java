// NocInterfaceVector.java: a native vector of HABMNocInterface pointers.
package ui.data.blockmodel;

/** A native {@code std::vector} of HABMNocInterface pointers; it never owns the objects. */
public final class NocInterfaceVector extends NativeCollection<NocInterface> {
  private static final Ops<NocInterface> OPS = new Ops<>(blockmodeli::NocInterfaceVector_size, (vector, element) -> {
    blockmodeli.NocInterfaceVector_push_back(vector, element);
    return true;
  }, blockmodeli::NocInterfaceVector_createIter, NocInterfaceIter::new, blockmodeli::delete_NocInterfaceVector);

  /** An empty vector that Java owns. */
  public NocInterfaceVector() {
    this(blockmodeli.new_NocInterfaceVector(), true, null);
  }

  NocInterfaceVector(long handle, boolean owned, Object owner) {
    super(OPS, handle, owned, owner);
  }

  /** A vector returned by value, which Java owns. */
  static NocInterfaceVector owned(long handle) {
    return new NocInterfaceVector(handle, true, null);
  }

  @Override
  public void clear() {
    blockmodeli.NocInterfaceVector_clear(handle());
  }
}
