// NocPathSet.java: a native set of NoC path pointers.
package ui.data.blockmodel;

import java.util.ArrayList;

/**
 * A native set of {@link NocPath} pointers, walked in the order of the native set. The set from
 * {@link NocPath#createNocPaths} owns its paths: they live as long as the set (or a view of one of them).
 */
public final class NocPathSet extends NativeCollection<NocPath> {
  private static final Ops<NocPath> OPS = new Ops<>(blockmodeli::NocPathSet_size, blockmodeli::NocPathSet_insert,
      blockmodeli::NocPathSet_createIter, NocPathIter::new, blockmodeli::delete_NocPathSet);

  /** An empty set that Java owns. */
  public NocPathSet() {
    this(blockmodeli.new_NocPathSet());
  }

  NocPathSet(long handle) {
    super(OPS, handle, true, null);
  }

  /** Takes the path out of the set; false when it was not in it. */
  @Override
  public boolean remove(Object path) {
    return path instanceof NocPath && blockmodeli.NocPathSet_erase(handle(), ((NocPath) path).handle);
  }

  @Override
  public void clear() {
    for (NocPath path : new ArrayList<>(this)) {
      remove(path);
    }
  }
}
