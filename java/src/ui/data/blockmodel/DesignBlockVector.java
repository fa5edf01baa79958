// DesignBlockVector.java: a native vector of HABMBlock pointers.
package ui.data.blockmodel;

/** A native {@code std::vector} of HABMBlock pointers; it never owns the objects. */
public final class DesignBlockVector extends NativeCollection<DesignBlock> {
  private static final Ops<DesignBlock> OPS = new Ops<>(blockmodeli::DesignBlockVector_size, (vector, element) -> {
    blockmodeli.DesignBlockVector_push_back(vector, element);
    return true;
  }, blockmodeli::DesignBlockVector_createIter, DesignBlockIter::new, blockmodeli::delete_DesignBlockVector);

  /** An empty vector that Java owns. */
  public DesignBlockVector() {
    this(blockmodeli.new_DesignBlockVector(), true, null);
  }

  DesignBlockVector(long handle, boolean owned, Object owner) {
    super(OPS, handle, owned, owner);
  }

  /** A vector returned by value, which Java owns. */
  static DesignBlockVector owned(long handle) {
    return new DesignBlockVector(handle, true, null);
  }

  @Override
  public void clear() {
    blockmodeli.DesignBlockVector_clear(handle());
  }
}
