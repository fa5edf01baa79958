// NativeIterator.java: a Java iterator over a native HSTFwdIter.
package ui.data.blockmodel;

import java.lang.ref.Cleaner;
import java.util.Iterator;
import java.util.NoSuchElementException;
import java.util.function.LongConsumer;
import java.util.function.LongPredicate;
import java.util.function.LongUnaryOperator;

/**
 * Walks a native container. The native iterator is freed when the walk ends, on {@link #close}, or once
 * the iterator is unreachable; the container it walks is kept reachable meanwhile. The container must not
 * change during the walk.
 */
public abstract class NativeIterator<E> implements Iterator<E>, AutoCloseable {
  /** Makes the view of one element; `owner` keeps what owns the element reachable. */
  interface Wrapper<E> {
    E wrap(long handle, Object owner);
  }

  private final long handle;
  private final Object container;
  private final LongPredicate hasNext;
  private final LongUnaryOperator next;
  private final Wrapper<E> wrapper;
  private final Cleaner.Cleanable cleanable;
  private boolean open = true;

  NativeIterator(long handle, Object container, LongPredicate hasNext, LongUnaryOperator next,
      LongConsumer delete, Wrapper<E> wrapper) {
    this.handle = handle;
    this.container = container;
    this.hasNext = hasNext;
    this.next = next;
    this.wrapper = wrapper;
    this.cleanable = register(this, handle, delete);
  }

  // Static, so that the cleaning action holds the handle and not the view.
  private static Cleaner.Cleanable register(Object view, long handle, LongConsumer delete) {
    return NativeObject.CLEANER.register(view, () -> delete.accept(handle));
  }

  @Override
  public boolean hasNext() {
    if (open && !hasNext.test(handle)) {
      close();
    }
    return open;
  }

  @Override
  public E next() {
    if (!hasNext()) {
      throw new NoSuchElementException();
    }
    return wrapper.wrap(next.applyAsLong(handle), container);
  }

  /** Frees the native iterator; the walk is over. */
  @Override
  public void close() {
    open = false;
    cleanable.clean();
  }
}
