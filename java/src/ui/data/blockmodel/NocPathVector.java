// NocPathVector.java: a native vector of HABMNocPath pointers.
package ui.data.blockmodel;

/** A native {@code std::vector} of HABMNocPath pointers; it never owns the objects. */
public final class NocPathVector extends NativeCollection<NocPath> {
  private static final Ops<NocPath> OPS = new Ops<>(blockmodeli::NocPathVector_size, (vector, element) -> {
    blockmodeli.NocPathVector_push_back(vector, element);
    return true;
  }, blockmodeli::NocPathVector_createIter, NocPathIter::new, blockmodeli::delete_NocPathVector);

  /** An empty vector that Java owns. */
  public NocPathVector() {
    this(blockmodeli.new_NocPathVector(), true, null);
  }

  NocPathVector(long handle, boolean owned, Object owner) {
    super(OPS, handle, owned, owner);
  }

  /** A vector returned by value, which Java owns. */
  static NocPathVector owned(long handle) {
    return new NocPathVector(handle, true, null);
  }

  @Override
  public void clear() {
    blockmodeli.NocPathVector_clear(handle());
  }
}
