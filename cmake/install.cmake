# cmake --install BUILD --prefix DIR: library, command, headers, CMake package, pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS zentor EXPORT zentorTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS zentor_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY include/zentor DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# For converter plug-ins: headers alone, nothing to link.
install(DIRECTORY src/model/include/ src/errors/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zentor/plugin)
add_library(zentor_plugin INTERFACE)
# In the build folder the headers stand as they are installed.
set(sdk ${CMAKE_BINARY_DIR}/sdk)
file(GLOB plugin_headers CONFIGURE_DEPENDS src/model/include/*.h src/errors/include/*.h)
foreach(header ${plugin_headers})
  get_filename_component(name ${header} NAME)
  configure_file(${header} ${sdk}/zentor/plugin/${name} COPYONLY)
endforeach()
target_include_directories(zentor_plugin INTERFACE $<BUILD_INTERFACE:${sdk}>
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
set_target_properties(zentor_plugin PROPERTIES EXPORT_NAME plugin)
add_library(zentor::plugin ALIAS zentor_plugin)
install(TARGETS zentor_plugin EXPORT zentorTargets)
install(EXPORT zentorTargets NAMESPACE zentor:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zentor)

# Plug-ins stand beside the library.
set(ZENTOR_PLUGIN_SUBDIR ${CMAKE_INSTALL_LIBDIR}/zentor-plugins)
if(WIN32)
  set(ZENTOR_PLUGIN_SUBDIR ${CMAKE_INSTALL_BINDIR}/zentor-plugins)
endif()
configure_package_config_file(cmake/zentorConfig.cmake.in ${CMAKE_BINARY_DIR}/zentorConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zentor PATH_VARS ZENTOR_PLUGIN_SUBDIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/zentorConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/zentorConfig.cmake ${CMAKE_BINARY_DIR}/zentorConfigVersion.cmake
  cmake/zentorPlugin.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/zentor)

file(RELATIVE_PATH ZENTOR_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/zentor.pc.in ${CMAKE_BINARY_DIR}/zentor.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/zentor.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
