# Installation: headers, libcvn_np_lib.a and libcvn_np_lib.so, the platform
# substitute, a CMake package (find_package(cvn_np_lib) -> cvn_np::cvn_np_lib
# (static), cvn_np::cvn_np_lib_shared, cvn_np::cvn_np_platform_sim),
# pkg-config files, the two programs and the manual pages.  Each file
# belongs to one component, which is one Debian package (cmake/
# cvn_np_package.cmake): runtime (the shared library), dev (what a program
# is built with) and tools (the programs).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(CVN_NP_LIB_DIR ${PROJECT_SOURCE_DIR}/platforms/corvan/lc/lc_tessel/lib)
set(CVN_NP_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/cvn_np)
set(CVN_NP_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/cvn_np_lib)

target_include_directories(cvn_np_lib PUBLIC $<INSTALL_INTERFACE:${CVN_NP_INSTALL_INCLUDEDIR}>)
target_include_directories(cvn_np_lib_shared PUBLIC
  $<INSTALL_INTERFACE:${CVN_NP_INSTALL_INCLUDEDIR}>)
target_include_directories(cvn_np_platform_sim PUBLIC
  $<INSTALL_INTERFACE:${CVN_NP_INSTALL_INCLUDEDIR}>)

install(TARGETS cvn_np_lib cvn_np_platform_sim EXPORT cvn_np_lib_targets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(TARGETS cvn_np_lib_shared EXPORT cvn_np_lib_targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)
# The self-test and the port-map explorer, for engineers who ask before
# they write code.
install(TARGETS cvn_np_selftest cvn_np_map RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  COMPONENT tools)
install(FILES
  ${CVN_NP_LIB_DIR}/include/cvn_np_lib.h
  ${CVN_NP_LIB_DIR}/include/cvn_np_lib_tables.h
  ${CVN_NP_LIB_DIR}/include/cvn_np_platform.h
  ${CVN_NP_LIB_DIR}/sim/cvn_np_sim.h
  DESTINATION ${CVN_NP_INSTALL_INCLUDEDIR} COMPONENT dev)
install(EXPORT cvn_np_lib_targets NAMESPACE cvn_np:: DESTINATION ${CVN_NP_INSTALL_CMAKEDIR}
  COMPONENT dev)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/cvn_np_libConfig.cmake.in
  ${PROJECT_BINARY_DIR}/cvn_np_libConfig.cmake INSTALL_DESTINATION ${CVN_NP_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/cvn_np_libConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/cvn_np_libConfig.cmake
  ${PROJECT_BINARY_DIR}/cvn_np_libConfigVersion.cmake DESTINATION ${CVN_NP_INSTALL_CMAKEDIR}
  COMPONENT dev)

# The .pc files find the prefix from their own place, so the tree can be
# installed anywhere (cmake --install --prefix).
file(RELATIVE_PATH CVN_NP_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
foreach(pc cvn_np_lib cvn_np_platform_sim)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${pc}.pc.in ${PROJECT_BINARY_DIR}/${pc}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${pc}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT dev)
endforeach()

# The manual pages, installed compressed: cvn_np_map(1), cvn_np_selftest(1)
# with the tools, cvn_np_lib(3) with the development files.
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/man)
foreach(page cvn_np_map.1 cvn_np_selftest.1 cvn_np_lib.3)
  string(REGEX REPLACE ".*\\." "" section ${page})
  set(component tools)
  if(section STREQUAL 3)
    set(component dev)
  endif()
  add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/man/${page}.gz
    COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/man/${page} > ${PROJECT_BINARY_DIR}/man/${page}.gz
    DEPENDS ${PROJECT_SOURCE_DIR}/man/${page} VERBATIM)
  list(APPEND CVN_NP_MAN_PAGES ${PROJECT_BINARY_DIR}/man/${page}.gz)
  install(FILES ${PROJECT_BINARY_DIR}/man/${page}.gz
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT ${component})
endforeach()
add_custom_target(cvn_np_man_pages ALL DEPENDS ${CVN_NP_MAN_PAGES})
