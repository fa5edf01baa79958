// NativeLibrary.java: loads the JNI library of the block model once.
package ui.data.blockmodel;

/**
 * Loads {@code libmz_blockmodel_jni}: from the file the system property {@code mz.blockmodel.jni} names,
 * else by name from {@code java.library.path}.
 */
final class NativeLibrary {
  private NativeLibrary() {}

  static void load() {
    String file = System.getProperty("mz.blockmodel.jni");
    if (file != null) {
      System.load(file);
    } else {
      System.loadLibrary("mz_blockmodel_jni");
    }
  }
}
