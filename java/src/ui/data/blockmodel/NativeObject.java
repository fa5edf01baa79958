// NativeObject.java: the common part of the Java views of native objects.
package ui.data.blockmodel;

import java.lang.ref.Cleaner;

/**
 * A view of a native object by its handle. Two views are equal when they show the same object. A view
 * keeps its owner reachable (the set that owns a path, the path that owns a vector), so the native
 * object is not freed while the view is in use.
 */
public abstract class NativeObject {
  /** Frees the native containers and iterators Java owns once their views are unreachable. */
  static final Cleaner CLEANER = Cleaner.create();

  final long handle;
  final Object owner;

  NativeObject(long handle, Object owner) {
    this.handle = handle;
    this.owner = owner;
  }

  /** The handle of an object, 0 for null: what the native methods take for an absent object. */
  static long handleOf(NativeObject object) {
    return object == null ? 0 : object.handle;
  }

  @Override
  public boolean equals(Object other) {
    return other != null && other.getClass() == getClass() && ((NativeObject) other).handle == handle;
  }

  @Override
  public int hashCode() {
    return Long.hashCode(handle);
  }
}
