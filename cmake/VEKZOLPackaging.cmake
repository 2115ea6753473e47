# Release packages made by CPack from the install components of
# VEKZOLInstall.cmake:
#  - DEB (VEKZOL_DEBIAN_PACKAGES=ON): libvekzolbase<major> from `runtime`,
#    libvekzolbase-dev from `development`, vekzol from `tool`, each with the
#    copyright file and the changelog Debian asks for;
#  - ZIP: one archive of every component, the Windows release
#    (bin/VEKZOLBase.dll, lib/libVEKZOLBase.dll.a, headers, CMake package).
# scripts/build-packages.sh configures the build for them and runs cpack.

set(VEKZOL_PACKAGE_CONTACT "VEKZOLBase developers <developers@vekzolbase.example>")
# The library package is named after the SONAME, so that two majors can be
# installed side by side and a program keeps the one it was linked with.
set(VEKZOL_RUNTIME_PACKAGE "libvekzolbase${PROJECT_VERSION_MAJOR}")
set(VEKZOL_DEVELOPMENT_PACKAGE "libvekzolbase-dev")
set(VEKZOL_TOOL_PACKAGE "vekzol")

set(CPACK_PACKAGE_NAME "vekzolbase")
set(CPACK_PACKAGE_VENDOR "VEKZOLBase developers")
set(CPACK_PACKAGE_CONTACT "${VEKZOL_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_BINARY_DIR}/packages")
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)
if(TARGET vekzol)
  list(APPEND CPACK_COMPONENTS_ALL tool)
endif()

# The zip: the components of CPACK_COMPONENTS_ALL in one tree, as an
# install gives it, below one folder named after the archive (grouped so in
# VEKZOLCPackOptions.cmake, as the Debian packages keep one package per
# component and no such folder).
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
if(WIN32)
  set(CPACK_SYSTEM_NAME "windows-x64")
endif()

# Debian packages.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE "${CPACK_PACKAGE_NAME}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS runtime)
set(CPACK_COMPONENT_TOOL_DEPENDS runtime)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME "${VEKZOL_RUNTIME_PACKAGE}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
  "C++ library for graphs of manufacturing models and their comparison
VEKZOLBase is the C++ foundation library of an application in which engineers
author manufacturing work instructions. It turns flat lists of objects and
relations into directed graphs keyed by id, walks them and compares two
states of a model. It also offers a trace log, an error list, an option
store, timers, session directories, blob compression, set algebra on string
lists, UTF-16 strings and 3D frames.

This package holds the shared library.")
# The library's own run-time dependencies are worked out when cpack runs
# (VEKZOLCPackOptions.cmake): CPack's own dpkg-shlibdeps run would also
# write an ldconfig call into maintainer scripts, where Debian wants the
# ldconfig trigger alone.
set(VEKZOL_SOVERSION "${PROJECT_VERSION_MAJOR}")
set(VEKZOL_VERSION "${PROJECT_VERSION}")
configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/shlibs.in"
  "${PROJECT_BINARY_DIR}/debian/runtime/shlibs" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/triggers"
  "${PROJECT_BINARY_DIR}/debian/runtime/triggers" COPYONLY)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  "${PROJECT_BINARY_DIR}/debian/runtime/shlibs;${PROJECT_BINARY_DIR}/debian/runtime/triggers")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME "${VEKZOL_DEVELOPMENT_PACKAGE}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
  "C++ library for graphs of manufacturing models - development files
VEKZOLBase is the C++ foundation library of an application in which engineers
author manufacturing work instructions: directed graphs built from objects and
relations, their walks and the comparison of two states of a model, with the
services the application shares.

This package holds the C++17 headers, the CMake package (find_package
VEKZOLBase), the pkg-config file vekzolbase.pc and the link to the library.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME "${VEKZOL_TOOL_PACKAGE}")
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_DESCRIPTION
  "compare two states of a manufacturing model and apply the change
vekzol reads model files (JSON lists of objects and relations) and reports
what to add, remove, move and rename to turn one state into the other, as
text or JSON, or draws the change as DOT, SVG or an HTML page. It writes
change files (its own, or JSON Patch) and applies them forwards and
backwards, prints a model's graph, compresses blobs and generates models of
any size for trying it at scale.")

# Run by cpack itself, for the library package's run-time dependencies.
file(GENERATE OUTPUT "${PROJECT_BINARY_DIR}/VEKZOLCPackFiles.cmake"
  CONTENT "set(VEKZOL_LIBRARY_FILE \"$<TARGET_FILE:VEKZOLBase>\")\n")
set(VEKZOL_CPACK_FILES "${PROJECT_BINARY_DIR}/VEKZOLCPackFiles.cmake")
configure_file("${PROJECT_SOURCE_DIR}/cmake/VEKZOLCPackOptions.cmake.in"
  "${PROJECT_BINARY_DIR}/VEKZOLCPackOptions.cmake" @ONLY)
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_BINARY_DIR}/VEKZOLCPackOptions.cmake")

# What Debian asks of every package: /usr/share/doc/<package>/copyright, and
# the changelog, which is CHANGELOG.md written the Debian way. The manual page
# is compressed as Debian keeps them.
if(VEKZOL_DEBIAN_PACKAGES)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set(debian_docs "${PROJECT_BINARY_DIR}/debian")
  configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/copyright" "${debian_docs}/copyright" @ONLY)
  execute_process(
    COMMAND "${Python3_EXECUTABLE}" "${PROJECT_SOURCE_DIR}/packaging/debian/debian-changelog.py"
      "${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${CPACK_PACKAGE_NAME}" "${PROJECT_VERSION}"
      "${VEKZOL_PACKAGE_CONTACT}"
    OUTPUT_FILE "${debian_docs}/changelog"
    RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "could not write the Debian changelog from CHANGELOG.md")
  endif()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/CHANGELOG.md")
  vekzol_gzip("${debian_docs}/changelog" "${debian_docs}/changelog.gz")
  # The library's lintian overrides, each with its reason.
  configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/runtime.lintian-overrides"
    "${debian_docs}/runtime/lintian-overrides" @ONLY)
  install(FILES "${debian_docs}/runtime/lintian-overrides"
    DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/lintian/overrides"
    RENAME "${VEKZOL_RUNTIME_PACKAGE}" COMPONENT runtime)
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER "${component}" upper)
    install(FILES "${debian_docs}/copyright" "${debian_docs}/changelog.gz"
      DESTINATION "${CMAKE_INSTALL_DATAROOTDIR}/doc/${VEKZOL_${upper}_PACKAGE}"
      COMPONENT ${component})
  endforeach()
endif()

include(CPack)
