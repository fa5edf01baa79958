// NocConnectionVector.java: a native vector of HABMNocConnection pointers.
package ui.data.blockmodel;

/** A native {@code std::vector} of HABMNocConnection pointers; it never owns the objects. */
public final class NocConnectionVector extends NativeCollection<NocConnection> {
  private static final Ops<NocConnection> OPS = new Ops<>(blockmodeli::NocConnectionVector_size, (vector, element) -> {
    blockmodeli.NocConnectionVector_push_back(vector, element);
    return true;
  }, blockmodeli::NocConnectionVector_createIter, NocConnectionIter::new, blockmodeli::delete_NocConnectionVector);

  /** An empty vector that Java owns. */
  public NocConnectionVector() {
    this(blockmodeli.new_NocConnectionVector(), true, null);
  }

  NocConnectionVector(long handle, boolean owned, Object owner) {
    super(OPS, handle, owned, owner);
  }

  /** A vector returned by value, which Java owns. */
  static NocConnectionVector owned(long handle) {
    return new NocConnectionVector(handle, true, null);
  }

  @Override
  public void clear() {
    blockmodeli.NocConnectionVector_clear(handle());
  }
}
