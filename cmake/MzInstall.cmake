# Install layout of the core: the shared libraries with versioned SONAMEs, the public headers under one
# include root, bmtool, the CMake package (mz_blockmodel::mz_blockmodel), a pkg-config file and the
# Debian package. Paths come from GNUInstallDirs, so that other parts (bindings, shells) install beside.

# Before 1.0 every minor version may break the ABI, so it is part of the SONAME.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(MZ_SOVERSION 0.${PROJECT_VERSION_MINOR})
else()
  set(MZ_SOVERSION ${PROJECT_VERSION_MAJOR})
endif()

# The libraries a user links, and those that only the library itself loads (exported too, for the
# linker to find them, but without headers or interface).
set(MZ_EXPORTED_LIBRARIES mz_blockmodel mz_common_msg mz_common_param mz_common_exception mz_common_util)
set(MZ_RUNTIME_LIBRARIES mz_common_json mz_isl_iostreams mz_common_tcltasks mz_common_pyinfra)

set_target_properties(${MZ_EXPORTED_LIBRARIES} ${MZ_RUNTIME_LIBRARIES} PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${MZ_SOVERSION}
  INSTALL_RPATH "$ORIGIN")
# bmtool finds the libraries beside it in any prefix, not only in the system's folders.
file(RELATIVE_PATH _mz_bin_to_lib ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
set_target_properties(bmtool PROPERTIES INSTALL_RPATH "$ORIGIN/${_mz_bin_to_lib}")

# Everything a public header includes lies below this root: "blockmodel/HABMBlock.h", "msg/ComMsgMgr.h".
set(MZ_INSTALL_INCLUDE_ROOT ${CMAKE_INSTALL_INCLUDEDIR}/mz_blockmodel)
set(MZ_INSTALL_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/mz_blockmodel)

install(TARGETS ${MZ_EXPORTED_LIBRARIES} mz_common_base EXPORT mz_blockmodelTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${MZ_INSTALL_INCLUDE_ROOT})
install(TARGETS ${MZ_RUNTIME_LIBRARIES} EXPORT mz_blockmodelTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_SKIP)
install(TARGETS bmtool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

install(FILES ${MZ_BLOCKMODEL_PUBLIC_HEADERS} DESTINATION ${MZ_INSTALL_INCLUDE_ROOT}/blockmodel)
# The platform headers the public ones include, and those a host uses with them (messages, parameters).
# The RapidJSON helpers stay out: only the forward declarations are part of the interface.
set(_mz_common ${PROJECT_SOURCE_DIR}/src/shared/common)
install(FILES ${_mz_common}/base/HATAttrObj.h ${_mz_common}/base/HATSrcInfo.h
              ${_mz_common}/base/HCWWaiverProxyElem.h
        DESTINATION ${MZ_INSTALL_INCLUDE_ROOT}/base)
install(FILES ${_mz_common}/exception/HEXAll.h DESTINATION ${MZ_INSTALL_INCLUDE_ROOT}/exception)
install(FILES ${_mz_common}/json/HCRapidJsonFwd.h DESTINATION ${MZ_INSTALL_INCLUDE_ROOT}/json)
install(FILES ${_mz_common}/msg/ComMsgCatalogue.h ${_mz_common}/msg/ComMsgMgr.h
              ${_mz_common}/msg/ComMsgMgrInstance.h ${_mz_common}/msg/ComMsgRecord.h
        DESTINATION ${MZ_INSTALL_INCLUDE_ROOT}/msg)
install(FILES ${_mz_common}/param/HPAParamMgr.h DESTINATION ${MZ_INSTALL_INCLUDE_ROOT}/param)
install(FILES ${_mz_common}/util/HUTEnv.h ${_mz_common}/util/HUTFile.h
        DESTINATION ${MZ_INSTALL_INCLUDE_ROOT}/util)

# The CMake package: find_package(mz_blockmodel CONFIG) gives mz_blockmodel::mz_blockmodel. Before 1.0
# only the same minor version is compatible, as the SONAME says.
include(CMakePackageConfigHelpers)
install(EXPORT mz_blockmodelTargets NAMESPACE mz_blockmodel:: DESTINATION ${MZ_INSTALL_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/mz_blockmodelConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES cmake/mz_blockmodelConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/mz_blockmodelConfigVersion.cmake
        DESTINATION ${MZ_INSTALL_CMAKE_DIR})

# The pkg-config file finds its prefix from where it lies, so that "cmake --install --prefix" may move it.
file(RELATIVE_PATH MZ_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" MZ_PC_TO_PREFIX "${MZ_PC_TO_PREFIX}")
configure_file(cmake/mz_blockmodel.pc.in ${CMAKE_CURRENT_BINARY_DIR}/mz_blockmodel.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/mz_blockmodel.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# cpack -G DEB: one package with the libraries, the headers and bmtool; dpkg-shlibdeps finds the
# dependencies (Boost.Iostreams, zlib, the C++ runtime).
set(CPACK_PACKAGE_NAME mz-blockmodel)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Block model library of a hardware design tool, and bmtool")
set(MZ_PACKAGE_CONTACT "mz_blockmodel developers" CACHE STRING "Maintainer field of the Debian package")
set(CPACK_PACKAGE_CONTACT ${MZ_PACKAGE_CONTACT})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
