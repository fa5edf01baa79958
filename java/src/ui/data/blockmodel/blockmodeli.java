// blockmodeli.java: the native methods of the block model library, one per exported JNI entry point.
package ui.data.blockmodel;

/**
 * The raw JNI surface of the block model: every method takes and returns native handles (the address of
 * a native object in a long), strings, booleans and integers. Handles are not checked: a handle must come
 * from this class and its object must still live. The proxy classes of this package ({@link DesignBlock},
 * {@link NocInterface}, {@link NocConnection}, {@link NocPath} and the containers) are the way to use it.
 * A native failure raises {@code ui.frmwork.cmd.CommandFailedException} or
 * {@code ui.frmwork.COutOfMemoryException}; a null string raises {@code NullPointerException}.
 */
public final class blockmodeli {
  static {
    NativeLibrary.load();
  }

  private blockmodeli() {}

  // Blocks (HABMBlock).
  public static native long DesignBlock_findNocConnection(long self, String path, boolean recursive);
  public static native long DesignBlock_findNocConnections(long self, String pattern, boolean recursive,
      boolean excludeIni);
  public static native long DesignBlock_findSubBlock(long self, String path, boolean recursive);
  public static native long DesignBlock_findSubBlocks(long self, String pattern, boolean recursive);
  public static native long DesignBlock_getRswAncestor(long self);
  public static native String DesignBlock_getInstanceName(long self);
  public static native String DesignBlock_getInstancePath(long self);
  public static native String DesignBlock_getModuleName(long self);
  public static native String DesignBlock_getModuleVlnv(long self);
  public static native long DesignBlock_getNocConnection(long self, String name);
  public static native long DesignBlock_getNocConnections(long self, boolean excludeIni);
  public static native long DesignBlock_getNocInterface(long self, String name);
  public static native long DesignBlock_getNocInterfaces(long self, boolean excludeIni);
  public static native long DesignBlock_getParent(long self);
  public static native long DesignBlock_getSubBlock(long self, String instanceName);
  public static native long DesignBlock_getSubBlocks(long self);
  public static native boolean DesignBlock_getTransparent(long self);
  public static native boolean DesignBlock_hasNocConnections(long self, boolean excludeIni);
  public static native boolean DesignBlock_hasNocInterfaces(long self, boolean excludeIni);
  public static native boolean DesignBlock_isBlockRsw(long self);
  public static native boolean DesignBlock_isVisible(long self);

  // NoC connections (HABMNocConnection).
  public static native String NocConnection_getName(long self);
  public static native long NocConnection_getParameter(long self, String name);
  public static native long NocConnection_getParameters(long self);
  public static native long NocConnection_getParent(long self);
  public static native String NocConnection_getPath(long self);
  public static native String NocConnection_getSourcePath(long self, boolean absolute);
  public static native String NocConnection_getTargetPath(long self, boolean absolute);
  public static native boolean NocConnection_isPrimary(long self);
  public static native boolean NocConnection_isVisible(long self);

  // NoC interfaces (HABMNocInterface); enumerations cross as their integer values.
  public static native String NocInterface_decodeNocMode(int mode);
  public static native String NocInterface_decodeNocProtocol(int protocol);
  public static native int NocInterface_encodeNocMode(String text);
  public static native int NocInterface_encodeNocProtocol(String text);
  public static native long NocInterface_getApertures(long self);
  public static native int NocInterface_getDestId(long self);
  public static native String NocInterface_getLocation(long self);
  public static native String NocInterface_getName(long self);
  public static native int NocInterface_getNocMode(long self);
  public static native int NocInterface_getNocProtocol(long self);
  public static native long NocInterface_getParameter(long self, String name);
  public static native long NocInterface_getParameters(long self);
  public static native long NocInterface_getParent(long self);
  public static native String NocInterface_getPath(long self);
  public static native long NocInterface_getSourceConnections(long self);
  public static native long NocInterface_getSourceInterfaces(long self);
  public static native long NocInterface_getTargetConnections(long self);
  public static native long NocInterface_getTargetInterfaces(long self);
  public static native boolean NocInterface_isVisible(long self);
  public static native void NocInterface_setApertures(long self, long apertures);

  // NoC paths (HABMNocPath).
  public static native long NocPath_createNocPaths(long block);
  public static native String NocPath_getName(long self);
  public static native long NocPath_getNmuInterface(long self);
  public static native long NocPath_getNocConnections(long self);
  public static native long NocPath_getNocInterfaces(long self);
  public static native long NocPath_getNsuInterface(long self);
  public static native long NocPath_getPrimaryConnection(long self);
  public static native long NocPath_getSourceInterface(long self);
  public static native long NocPath_getTargetInterface(long self);
  public static native long NocPath_getVNocInterfaces(long self);
  public static native boolean NocPath_isCompletePath(long self);

  // Value types.
  public static native String HABMAddrAperture_getBaseAbrvString(long self, int bits);
  public static native long HABMAddrAperture_getBaseAddress(long self);
  public static native String HABMAddrAperture_getBaseHighString(long self, int bits);
  public static native long HABMAddrAperture_getHighAddress(long self);
  public static native long HABMAddrAperture_getRange(long self);
  public static native String HABMAddrValue_getPrettyHexStringValue(long self, int bits);
  public static native String HABMParameter_getName(long self);
  public static native String HABMParameter_getValue(long self);

  // Vectors of pointers; delete frees the vector, not the objects.
  public static native long new_DesignBlockVector();
  public static native void delete_DesignBlockVector(long handle);
  public static native void DesignBlockVector_clear(long self);
  public static native long DesignBlockVector_createIter(long self);
  public static native void DesignBlockVector_push_back(long self, long element);
  public static native long DesignBlockVector_size(long self);
  public static native long new_NocConnectionVector();
  public static native void delete_NocConnectionVector(long handle);
  public static native void NocConnectionVector_clear(long self);
  public static native long NocConnectionVector_createIter(long self);
  public static native void NocConnectionVector_push_back(long self, long element);
  public static native long NocConnectionVector_size(long self);
  public static native long new_NocInterfaceVector();
  public static native void delete_NocInterfaceVector(long handle);
  public static native void NocInterfaceVector_clear(long self);
  public static native long NocInterfaceVector_createIter(long self);
  public static native void NocInterfaceVector_push_back(long self, long element);
  public static native long NocInterfaceVector_size(long self);
  public static native long new_NocPathVector();
  public static native void delete_NocPathVector(long handle);
  public static native void NocPathVector_clear(long self);
  public static native long NocPathVector_createIter(long self);
  public static native void NocPathVector_push_back(long self, long element);
  public static native long NocPathVector_size(long self);

  // The set of NoC paths.
  public static native long new_NocPathSet();
  public static native void delete_NocPathSet(long handle);
  public static native long NocPathSet_createIter(long self);
  public static native boolean NocPathSet_erase(long self, long path);
  public static native boolean NocPathSet_insert(long self, long path);
  public static native long NocPathSet_size(long self);

  // Iterators: next may be called only while hasNext is true.
  public static native void delete_DesignBlockIter(long handle);
  public static native boolean DesignBlockIter_hasNext(long self);
  public static native long DesignBlockIter_next(long self);
  public static native void delete_NocConnectionIter(long handle);
  public static native boolean NocConnectionIter_hasNext(long self);
  public static native long NocConnectionIter_next(long self);
  public static native void delete_NocInterfaceIter(long handle);
  public static native boolean NocInterfaceIter_hasNext(long self);
  public static native long NocInterfaceIter_next(long self);
  public static native void delete_NocPathIter(long handle);
  public static native boolean NocPathIter_hasNext(long self);
  public static native long NocPathIter_next(long self);

  // Enumeration values.
  public static native int get_NocInterface_NocMode_NMU();
  public static native int get_NocInterface_NocMode_NSU();
  public static native int get_NocInterface_NocMode_VNMU();
  public static native int get_NocInterface_NocMode_VNSU();
  public static native int get_NocInterface_NocMode_UNKNOWN();
  public static native int get_NocInterface_NocProtocol_AXIMM();
  public static native int get_NocInterface_NocProtocol_AXIS();
  public static native int get_NocInterface_NocProtocol_UNKNOWN();
}
