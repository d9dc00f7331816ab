# Installation: headers, libcvn_np_lib.a, the platform substitute, a CMake
# package (find_package(cvn_np_lib) -> cvn_np::cvn_np_lib,
# cvn_np::cvn_np_platform_sim) and pkg-config files.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(CVN_NP_LIB_DIR ${PROJECT_SOURCE_DIR}/platforms/corvan/lc/lc_tessel/lib)
set(CVN_NP_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/cvn_np)
set(CVN_NP_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/cvn_np_lib)

target_include_directories(cvn_np_lib PUBLIC $<INSTALL_INTERFACE:${CVN_NP_INSTALL_INCLUDEDIR}>)
target_include_directories(cvn_np_platform_sim PUBLIC
  $<INSTALL_INTERFACE:${CVN_NP_INSTALL_INCLUDEDIR}>)

install(TARGETS cvn_np_lib cvn_np_platform_sim EXPORT cvn_np_lib_targets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
# The port-map explorer, for engineers who ask before they write code.
install(TARGETS cvn_np_map RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES
  ${CVN_NP_LIB_DIR}/include/cvn_np_lib.h
  ${CVN_NP_LIB_DIR}/include/cvn_np_lib_tables.h
  ${CVN_NP_LIB_DIR}/include/cvn_np_platform.h
  ${CVN_NP_LIB_DIR}/sim/cvn_np_sim.h
  DESTINATION ${CVN_NP_INSTALL_INCLUDEDIR})
install(EXPORT cvn_np_lib_targets NAMESPACE cvn_np:: DESTINATION ${CVN_NP_INSTALL_CMAKEDIR})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/cvn_np_libConfig.cmake.in
  ${PROJECT_BINARY_DIR}/cvn_np_libConfig.cmake INSTALL_DESTINATION ${CVN_NP_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cvn_np_libConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/cvn_np_libConfig.cmake
  ${PROJECT_BINARY_DIR}/cvn_np_libConfigVersion.cmake DESTINATION ${CVN_NP_INSTALL_CMAKEDIR})

# The .pc files find the prefix from their own place, so the tree can be
# installed anywhere (cmake --install --prefix).
file(RELATIVE_PATH CVN_NP_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
foreach(pc cvn_np_lib cvn_np_platform_sim)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${pc}.pc.in ${PROJECT_BINARY_DIR}/${pc}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${pc}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
