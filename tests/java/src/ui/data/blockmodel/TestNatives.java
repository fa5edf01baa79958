// TestNatives.java: native helpers of the tests, beside the 119 entry points.
package ui.data.blockmodel;

/** Makes designs and values, and throws on purpose, through the same native glue as blockmodeli. */
final class TestNatives {
  static {
    System.loadLibrary("mz_blockmodel_jni_test");
  }

  private TestNatives() {}

  static native long readTopBlock(String path);
  static native long createTopBlock(String module);
  static native long createSubBlock(long parent, String instance, String module);
  static native void deleteTopBlock(long top);
  /** Returns its argument and counts the calls that reached it. */
  static native String echo(String text);
  static native int echoCalls();
  /** The UTF-8 bytes the native side received, in hex. */
  static native String utf8Hex(String text);
  /** Throws a message, an empty HEXAll, bad_alloc, a standard exception, or (4) anything else. */
  static native void throwKind(int kind, String text);
  static native long makeAperture(String text);
  static native long makeApertures(String texts);
  static native String aperturesText(long apertures);
  static native long parameterCount(long parameters);
  static native void deleteParameters(long parameters);
}
