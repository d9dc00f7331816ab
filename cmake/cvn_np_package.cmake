# Debian packages, built with CPack by scripts/package.sh (cpack -G DEB)
# from the components of cmake/cvn_np_install.cmake:
#   libcvn-np-lib1      runtime: libcvn_np_lib.so.<ABI major> (the package name
#                       carries the SONAME's number)
#   libcvn-np-lib-dev   dev: headers, libcvn_np_lib.a, the .so link, the
#                       platform substitute, CMake package, pkg-config, cvn_np_lib(3)
#   cvn-np-tools        tools: cvn_np_selftest and cvn_np_map with the
#                       platform substitute, their section 1 pages
# Each has /usr/share/doc/<package>/copyright and changelog.Debian.gz.
set(CVN_NP_DEB_RUNTIME libcvn-np-lib${CVN_NP_ABI_MAJOR})
set(CVN_NP_DEB_VERSION ${PROJECT_VERSION}-1)

foreach(component runtime dev tools)
  string(TOUPPER ${component} c)
  set(pkg ${CVN_NP_DEB_RUNTIME})
  if(component STREQUAL dev)
    set(pkg libcvn-np-lib-dev)
  elseif(component STREQUAL tools)
    set(pkg cvn-np-tools)
  endif()
  set(CPACK_DEBIAN_${c}_PACKAGE_NAME ${pkg})
  set(doc ${PROJECT_BINARY_DIR}/debian-doc/${pkg})
  file(MAKE_DIRECTORY ${doc})
  set(CVN_NP_DEB_PKG ${pkg})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/debian/changelog.in ${doc}/changelog.Debian @ONLY)
  execute_process(COMMAND gzip -9nf ${doc}/changelog.Debian)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright ${doc}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${pkg} COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME cvn-np-lib)
set(CPACK_PACKAGE_VENDOR corvan)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "corvan line-card software <lc-software@corvan.example>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR})
set(CPACK_COMPONENTS_ALL runtime dev tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
  ${PROJECT_BINARY_DIR}/platforms/corvan/lc/lc_tessel/lib)
# The runtime package's shlibs (programs built against it depend on this
# version or later) and its ldconfig trigger, written here rather than by
# CPack, whose own postinst would call ldconfig directly.
file(WRITE ${PROJECT_BINARY_DIR}/debian-control/shlibs
  "libcvn_np_lib ${CVN_NP_ABI_MAJOR} ${CVN_NP_DEB_RUNTIME} (>= ${CVN_NP_DEB_VERSION})\n")
file(WRITE ${PROJECT_BINARY_DIR}/debian-control/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${PROJECT_BINARY_DIR}/debian-control/shlibs ${PROJECT_BINARY_DIR}/debian-control/triggers)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "NP port mapping of the corvan tessel line cards
cvn_np_lib answers, for the software of a corvan tessel line card, which
network processor (NP) and NP-local port serve a port on the card's front
panel, and the reverse, for eight card families.  It asks the platform
what is plugged in through two calls the program supplies.

This package holds the shared library.")

set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${CVN_NP_DEB_RUNTIME} (= ${CVN_NP_DEB_VERSION})")
set(CPACK_COMPONENT_DEV_DESCRIPTION "NP port mapping of the corvan tessel line cards (development files)
cvn_np_lib answers, for the software of a corvan tessel line card, which
network processor (NP) and NP-local port serve a port on the card's front
panel, and the reverse, for eight card families.

This package holds the C headers, the static library, the platform
substitute for programs that run off the card, the CMake package, the
pkg-config files and the cvn_np_lib(3) manual page.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${CVN_NP_DEB_RUNTIME} (= ${CVN_NP_DEB_VERSION})")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "NP port mapping of the corvan tessel line cards (tools)
cvn_np_lib answers, for the software of a corvan tessel line card, which
network processor (NP) and NP-local port serve a port on the card's front
panel, and the reverse, for eight card families.

This package holds cvn_np_selftest, the library's self-test, and
cvn_np_map, which prints a card's port map, answers one port's question,
draws the front panel and checks the library's answers, both linked with
the platform substitute so that they run off the card.")

include(CPack)
