# The installed package: find_package(TextManagerLibrary), with Qt 6 TextManagerLibrary6, and the
# pkg-config module of that name.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${TEXTMANAGER_PACKAGE})

if(TEXTMANAGER_PLATFORM_PACKAGE)
  set(find_platform "find_dependency(${TEXTMANAGER_PLATFORM_PACKAGE})")
endif()
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/TextManagerLibraryConfig.cmake.in
  ${PROJECT_BINARY_DIR}/${TEXTMANAGER_PACKAGE}Config.cmake
  INSTALL_DESTINATION ${package_dir}
  PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/${TEXTMANAGER_PACKAGE}ConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${CMAKE_CURRENT_LIST_DIR}/TextManagerKeys.cmake
  ${PROJECT_BINARY_DIR}/${TEXTMANAGER_PACKAGE}Config.cmake
  ${PROJECT_BINARY_DIR}/${TEXTMANAGER_PACKAGE}ConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT development)
install(EXPORT ${TEXTMANAGER_PACKAGE}Targets
  NAMESPACE ${TEXTMANAGER_PACKAGE}:: DESTINATION ${package_dir} COMPONENT development)
foreach(addon Messages Quick)
  if(TARGET TextManagerLibrary::${addon})
    install(EXPORT ${TEXTMANAGER_PACKAGE}${addon}Targets
      NAMESPACE ${TEXTMANAGER_PACKAGE}:: DESTINATION ${package_dir} COMPONENT development)
  endif()
endforeach()

# A project that has this one as a part links it by the names of the installed package, too.
if(TEXTMANAGER_SUFFIX)
  foreach(target TextManagerLibrary ReferencePlatform TextManagerMessages TextManagerQuick)
    if(TARGET ${target})
      get_target_property(name ${target} EXPORT_NAME)
      add_library(${TEXTMANAGER_PACKAGE}::${name} ALIAS ${target})
    endif()
  endforeach()
endif()

# pkg-config knows no targets: it gets the include folders and the library file of the platform.
if(TEXTMANAGER_PLATFORM_PACKAGE)
  set(platform_includes
    "$<TARGET_PROPERTY:${TEXTMANAGER_PLATFORM_TARGET},INTERFACE_INCLUDE_DIRECTORIES>")
  set(pc_platform_cflags "$<$<BOOL:${platform_includes}>:-I$<JOIN:${platform_includes}, -I>>")
  get_target_property(platform_type ${TEXTMANAGER_PLATFORM_TARGET} TYPE)
  if(NOT platform_type STREQUAL "INTERFACE_LIBRARY")
    set(pc_platform_libs "$<TARGET_LINKER_FILE:${TEXTMANAGER_PLATFORM_TARGET}>")
  endif()
else()
  set(pc_platform_cflags "-I\${includedir}/${TEXTMANAGER_PACKAGE}/platform")
  set(pc_platform_libs "-lTextManagerReferencePlatform${TEXTMANAGER_SUFFIX}")
endif()
# A folder below the prefix moves with it, an absolute one stays.
set(pc_includedir ${CMAKE_INSTALL_INCLUDEDIR})
set(pc_libdir ${CMAKE_INSTALL_LIBDIR})
foreach(dir pc_includedir pc_libdir)
  cmake_path(ABSOLUTE_PATH ${dir} BASE_DIRECTORY "\${prefix}")
endforeach()
file(RELATIVE_PATH prefix_from_pc_file
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(
  ${CMAKE_CURRENT_LIST_DIR}/TextManagerLibrary.pc.in
  ${PROJECT_BINARY_DIR}/${TEXTMANAGER_PACKAGE}.pc.configured @ONLY)
file(GENERATE
  OUTPUT ${PROJECT_BINARY_DIR}/${TEXTMANAGER_PACKAGE}.pc
  INPUT ${PROJECT_BINARY_DIR}/${TEXTMANAGER_PACKAGE}.pc.configured)
install(FILES ${PROJECT_BINARY_DIR}/${TEXTMANAGER_PACKAGE}.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
