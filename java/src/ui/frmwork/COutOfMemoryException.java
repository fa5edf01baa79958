// COutOfMemoryException.java: native code ran out of memory.
package ui.frmwork;

/** Native code could not allocate memory; the JVM's own heap may still be fine. */
public class COutOfMemoryException extends RuntimeException {
  private static final long serialVersionUID = 1L;

  public COutOfMemoryException(String message) {
    super(message);
  }
}
