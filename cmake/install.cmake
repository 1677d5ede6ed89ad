# Installed as Debian C libraries are: the shared object with its versioned
# soname, every public header under include/vitrail/, vitrail.pc for
# pkg-config and the CMake package vitrail (target vitrail::vitrail).
include(CMakePackageConfigHelpers)

set(vitrail_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vitrail)

install(TARGETS vitrail EXPORT vitrailTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime
        NAMELINK_COMPONENT Development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vitrail DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT Development FILES_MATCHING PATTERN "*.h")
install(EXPORT vitrailTargets NAMESPACE vitrail:: DESTINATION ${vitrail_cmake_dir}
        COMPONENT Development)

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/vitrailConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/vitrailConfig.cmake
                              INSTALL_DESTINATION ${vitrail_cmake_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/vitrailConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/vitrailConfig.cmake
              ${PROJECT_BINARY_DIR}/vitrailConfigVersion.cmake
        DESTINATION ${vitrail_cmake_dir} COMPONENT Development)

# vitrail.pc: the libraries linked privately into the shared object become
# Requires.private (pkg-config modules, known by the imported targets
# PkgConfig::<prefix> that pkg_check_modules makes) or Libs.private (plain
# library names such as dl).
set(pc_requires_private "")
set(pc_libs_private "")
get_target_property(deps vitrail_deps INTERFACE_LINK_LIBRARIES)
foreach(dep IN LISTS deps)
  string(REGEX REPLACE "^PkgConfig::" "" pc_prefix "${dep}")
  if(dep MATCHES "^::@" OR dep STREQUAL "")
    continue() # the marker of the folder a link came from
  elseif(NOT pc_prefix STREQUAL dep AND DEFINED CACHE{${pc_prefix}_MODULE_NAME})
    list(APPEND pc_requires_private $CACHE{${pc_prefix}_MODULE_NAME})
  elseif(NOT TARGET ${dep} AND dep MATCHES "^[A-Za-z0-9_.+-]+$")
    list(APPEND pc_libs_private -l${dep})
  else()
    message(WARNING "vitrail.pc: no pkg-config module known for ${dep}")
  endif()
endforeach()
list(REMOVE_DUPLICATES pc_requires_private)
list(JOIN pc_requires_private ", " pc_requires_private)
list(JOIN pc_libs_private " " pc_libs_private)
foreach(dir LIBDIR INCLUDEDIR)
  if(IS_ABSOLUTE ${CMAKE_INSTALL_${dir}})
    set(pc_${dir} ${CMAKE_INSTALL_${dir}})
  else()
    set(pc_${dir} "\${prefix}/${CMAKE_INSTALL_${dir}}")
  endif()
endforeach()

# The prefix is only known at install time (cmake --install --prefix).
set(prefix "@prefix@")
configure_file(${CMAKE_CURRENT_LIST_DIR}/vitrail.pc.in ${PROJECT_BINARY_DIR}/vitrail.pc.in @ONLY)
install(CODE "
  set(prefix \"\${CMAKE_INSTALL_PREFIX}\")
  configure_file(\"${PROJECT_BINARY_DIR}/vitrail.pc.in\"
                 \"${PROJECT_BINARY_DIR}/pkgconfig/vitrail.pc\" @ONLY)
" COMPONENT Development)
install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/vitrail.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
