# Installs the headers, the library with its version links, the CMake package
# (target tyx::tyx) and the pkg-config file.
include(CMakePackageConfigHelpers)

set(TYX_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/tyx)

install(TARGETS tyx EXPORT tyxTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/tyx
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h")
install(EXPORT tyxTargets NAMESPACE tyx:: DESTINATION ${TYX_CMAKE_DIR})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/tyxConfig.cmake.in
  ${PROJECT_BINARY_DIR}/tyxConfig.cmake
  INSTALL_DESTINATION ${TYX_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tyxConfigVersion.cmake
  VERSION ${PROJECT_VERSION}
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/tyxConfig.cmake
  ${PROJECT_BINARY_DIR}/tyxConfigVersion.cmake
  DESTINATION ${TYX_CMAKE_DIR})

# The pkg-config file finds its prefix relative to itself, so a staged or
# relocated installation stays usable.
file(RELATIVE_PATH TYX_PC_RELPREFIX "/p/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/p")
configure_file(${CMAKE_CURRENT_LIST_DIR}/tyx.pc.in ${PROJECT_BINARY_DIR}/tyx.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tyx.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
