# Install and export rules: headers under include/vekzol, the shared
# library with its SONAME link, a CMake package (VEKZOLBaseConfig.cmake with
# a version file and the VEKZOLBase::VEKZOLBase target) and vekzolbase.pc.
include(CMakePackageConfigHelpers)

# Compresses INPUT into OUTPUT when configuring, again whenever INPUT
# changes. gzip -n leaves the name and time stamp out, so the same text
# always gives the same bytes.
function(vekzol_gzip input output)
  find_program(VEKZOL_GZIP gzip)
  if(NOT VEKZOL_GZIP)
    message(FATAL_ERROR "gzip not found: it compresses ${input} for the Debian packages")
  endif()
  get_filename_component(directory "${output}" DIRECTORY)
  file(MAKE_DIRECTORY "${directory}")
  execute_process(COMMAND "${VEKZOL_GZIP}" -9 -n -c "${input}" OUTPUT_FILE "${output}"
    RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "could not compress ${input}")
  endif()
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${input}")
endfunction()

set(VEKZOL_CMAKE_INSTALL_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/VEKZOLBase")

# Three install components, one per package: `runtime` (the shared library
# a program needs to run), `development` (what a build needs: headers, the
# unversioned link or import library, CMake package, pkg-config file) and
# `tool` (the vekzol command). A plain `cmake --install` installs all three.
install(TARGETS VEKZOLBase
  EXPORT VEKZOLBaseTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

install(DIRECTORY "${PROJECT_SOURCE_DIR}/include/vekzol"
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development
  FILES_MATCHING PATTERN "*.h")

install(EXPORT VEKZOLBaseTargets
  NAMESPACE VEKZOLBase::
  FILE VEKZOLBaseTargets.cmake
  DESTINATION ${VEKZOL_CMAKE_INSTALL_DIR}
  COMPONENT development)

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/VEKZOLBaseConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/VEKZOLBaseConfig.cmake"
  INSTALL_DESTINATION ${VEKZOL_CMAKE_INSTALL_DIR})
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/VEKZOLBaseConfigVersion.cmake"
  VERSION ${PROJECT_VERSION}
  COMPATIBILITY SameMajorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/VEKZOLBaseConfig.cmake"
  "${PROJECT_BINARY_DIR}/VEKZOLBaseConfigVersion.cmake"
  DESTINATION ${VEKZOL_CMAKE_INSTALL_DIR}
  COMPONENT development)

# The build tree is usable as a package too.
export(EXPORT VEKZOLBaseTargets
  NAMESPACE VEKZOLBase::
  FILE "${PROJECT_BINARY_DIR}/VEKZOLBaseTargets.cmake")

# pkg-config: the prefix is found relative to the .pc file itself, so an
# install stays usable wherever --prefix puts it.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(VEKZOL_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
  set(VEKZOL_PC_LIBDIR "${CMAKE_INSTALL_LIBDIR}")
else()
  file(RELATIVE_PATH pc_to_prefix "/root/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/root")
  string(REGEX REPLACE "/$" "" pc_to_prefix "${pc_to_prefix}")
  set(VEKZOL_PC_PREFIX "\${pcfiledir}/${pc_to_prefix}")
  set(VEKZOL_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
endif()
if(IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(VEKZOL_PC_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}")
else()
  set(VEKZOL_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
# On Windows the VARIANT and BSTR functions of the headers are the system's:
# their users link oleaut32 too.
if(WIN32)
  set(VEKZOL_PC_SYSTEM_LIBS " -loleaut32")
else()
  set(VEKZOL_PC_SYSTEM_LIBS "")
endif()
configure_file("${PROJECT_SOURCE_DIR}/cmake/vekzolbase.pc.in"
  "${PROJECT_BINARY_DIR}/vekzolbase.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/vekzolbase.pc"
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)

# The command-line tool, where it is built: bin/vekzol, which finds the
# shared library in the lib directory beside bin.
if(TARGET vekzol)
  install(TARGETS vekzol RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
  set(manual_page "${PROJECT_SOURCE_DIR}/tools/vekzol/vekzol.1")
  if(VEKZOL_DEBIAN_PACKAGES)
    # Debian keeps manual pages compressed.
    vekzol_gzip("${manual_page}" "${PROJECT_BINARY_DIR}/debian/vekzol.1.gz")
    set(manual_page "${PROJECT_BINARY_DIR}/debian/vekzol.1.gz")
  endif()
  install(FILES "${manual_page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT tool)
endif()
