// NativeCollection.java: a Java collection over a native vector or set of object pointers.
package ui.data.blockmodel;

import java.lang.ref.Cleaner;
import java.util.AbstractCollection;
import java.util.function.LongConsumer;
import java.util.function.LongUnaryOperator;
import ui.frmwork.COutOfMemoryException;

/**
 * A native container of pointers seen as a collection. One that Java owns (made with {@code new}, or
 * returned by value) is freed on {@link #close} or once unreachable; freeing it never frees the objects.
 * One that belongs to a native object (a path's list of links) is never freed from Java. Using a closed
 * collection throws {@code IllegalStateException}.
 */
public abstract class NativeCollection<E extends NativeObject> extends AbstractCollection<E> implements AutoCloseable {
  /** The native operations of one container type. */
  static final class Ops<E> {
    interface Add {
      boolean add(long container, long element);
    }

    interface Iter<E> {
      NativeIterator<E> iterator(long handle, Object container);
    }

    final LongUnaryOperator size;
    final Add add;
    final LongUnaryOperator createIter;
    final Iter<E> iter;
    final LongConsumer delete;

    Ops(LongUnaryOperator size, Add add, LongUnaryOperator createIter, Iter<E> iter, LongConsumer delete) {
      this.size = size;
      this.add = add;
      this.createIter = createIter;
      this.iter = iter;
      this.delete = delete;
    }
  }

  private final long handle;
  private final Ops<E> ops;
  private final Object owner;
  private final Cleaner.Cleanable cleanable;
  private boolean closed;

  /** `handle` 0 means that the native copy could not be allocated. */
  NativeCollection(Ops<E> ops, long handle, boolean owned, Object owner) {
    if (handle == 0) {
      throw new COutOfMemoryException("Out of memory");
    }
    this.handle = handle;
    this.ops = ops;
    this.owner = owner;
    LongConsumer delete = ops.delete;
    this.cleanable = owned ? NativeObject.CLEANER.register(this, () -> delete.accept(handle)) : null;
  }

  /** The native handle, checked to be still open. */
  final long handle() {
    if (closed) {
      throw new IllegalStateException("the native container has been freed");
    }
    return handle;
  }

  @Override
  public int size() {
    return (int) Math.min(Integer.MAX_VALUE, ops.size.applyAsLong(handle()));
  }

  @Override
  public boolean add(E element) {
    return ops.add.add(handle(), NativeObject.handleOf(element));
  }

  /** Walks the elements as they are now; close the iterator if the walk stops early. */
  @Override
  public NativeIterator<E> iterator() {
    return ops.iter.iterator(ops.createIter.applyAsLong(handle()), this);
  }

  /** Frees the native container if Java owns it; the collection cannot be used afterwards. */
  @Override
  public void close() {
    closed = true;
    if (cleanable != null) {
      cleanable.clean();
    }
  }
}
