// CommandFailedException.java: a native operation failed; the message says why.
package ui.frmwork.cmd;

/** A command or native operation that failed; its message is the reason, possibly empty. */
public class CommandFailedException extends RuntimeException {
  private static final long serialVersionUID = 1L;

  public CommandFailedException(String message) {
    super(message);
  }
}
