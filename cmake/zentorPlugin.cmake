# Converter plug-ins.
#
#   zentor_add_plugin(NAME SOURCES file... MANIFEST file.json [IDENTIFIER identifier] [NO_INSTALL])
#
# makes the module NAME from C++ sources that have ZENTOR_PLUGIN(...) once. The manifest is embedded, and the module's
# identifier: by default that of the manifest's first converter. Unless told otherwise, `cmake --install` puts the module
# into the folder in which the library looks for plug-ins, when the prefix is that of the library.
include_guard()
include(GNUInstallDirs)

function(zentor_add_plugin name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "NO_INSTALL" "MANIFEST;IDENTIFIER" "SOURCES")
  if(NOT arg_SOURCES OR NOT arg_MANIFEST OR arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "usage: zentor_add_plugin(NAME SOURCES file... MANIFEST file.json [IDENTIFIER identifier] [NO_INSTALL])")
  endif()
  file(REAL_PATH "${arg_MANIFEST}" manifest BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
  # A change of the manifest configures anew.
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${manifest}")
  if(NOT arg_IDENTIFIER)
    file(READ "${manifest}" json)
    string(JSON arg_IDENTIFIER GET "${json}" converter 0 identifier)
  endif()
  set(identifier "${CMAKE_CURRENT_BINARY_DIR}/${name}.identifier")
  file(CONFIGURE OUTPUT "${identifier}" CONTENT "@arg_IDENTIFIER@" @ONLY)

  add_library(${name} MODULE ${arg_SOURCES})
  set(embedded "${CMAKE_CURRENT_BINARY_DIR}/${name}")
  if(WIN32)
    file(CONFIGURE OUTPUT "${embedded}.rc" @ONLY CONTENT
      "ZTPLUGINUIDS txt \"@manifest@\"\nMODULE_IDENTIFIER txt \"@identifier@\"\n")
    target_sources(${name} PRIVATE "${embedded}.rc")
    set(plugin_folder "${CMAKE_INSTALL_BINDIR}/zentor-plugins")
  else()
    _zentor_bytes(manifest_bytes "${manifest}")
    _zentor_bytes(identifier_bytes "${identifier}")
    file(CONFIGURE OUTPUT "${embedded}_texts.cpp" @ONLY CONTENT [[
#define ZT_TEXT(name) __attribute__((section(".zt.txt." name), used)) static const unsigned char
ZT_TEXT("ZTPLUGINUIDS") kManifest[] = {@manifest_bytes@};
ZT_TEXT("MODULE_IDENTIFIER") kIdentifier[] = {@identifier_bytes@};
]])
    target_sources(${name} PRIVATE "${embedded}_texts.cpp")
    set(plugin_folder "${CMAKE_INSTALL_LIBDIR}/zentor-plugins")
  endif()
  set_target_properties(${name} PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PRIVATE zentor::plugin)
  if(MINGW)  # the module finds its runtime nowhere but in itself
    target_link_options(${name} PRIVATE -static)
  endif()
  target_compile_features(${name} PRIVATE cxx_std_17)
  if(NOT arg_NO_INSTALL)
    install(TARGETS ${name} LIBRARY DESTINATION "${plugin_folder}")
  endif()
endfunction()

# The bytes of a file as the elements of an array.
function(_zentor_bytes result path)
  file(READ "${path}" bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
  set(${result} "${bytes}" PARENT_SCOPE)
endfunction()
