# mz_blockmodelConfig.cmake: the installed block model library, as mz_blockmodel::mz_blockmodel. Its
# interface needs neither Boost nor RapidJSON, so nothing else is looked for.
include(${CMAKE_CURRENT_LIST_DIR}/mz_blockmodelTargets.cmake)
