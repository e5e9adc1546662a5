# Converter plug-ins.
#
#   zentor_add_plugin(NAME SOURCES file... MANIFEST file.json [IDENTIFIER identifier] [NO_INSTALL])
#
# makes the module NAME from C++ sources that have ZENTOR_PLUGIN(...) once. The manifest is embedded, and the module's
# identifier: by default that of the manifest's first converter. A function that no library provides is an error when
# the module is linked. Unless told otherwise, `cmake --install` puts the module below its prefix where the library that
# was found has its plug-ins below its own, zentor_PLUGIN_SUBDIR; a top-level project that was configured without a
# prefix gets that of the library, so that the module goes into its folder, zentor_PLUGIN_DIR.
include_guard()
if(NOT DEFINED zentor_PLUGIN_SUBDIR)  # as a part of the library's own project
  include(GNUInstallDirs)
  set(zentor_PLUGIN_SUBDIR ${CMAKE_INSTALL_LIBDIR}/zentor-plugins)
  if(WIN32)
    set(zentor_PLUGIN_SUBDIR ${CMAKE_INSTALL_BINDIR}/zentor-plugins)
  endif()
endif()

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
    set_source_files_properties("${embedded}.rc" PROPERTIES OBJECT_DEPENDS "${manifest};${identifier}")
    target_sources(${name} PRIVATE "${embedded}.rc")
  else()
    _zentor_bytes(manifest_bytes "${manifest}")
    _zentor_bytes(identifier_bytes "${identifier}")
    file(CONFIGURE OUTPUT "${embedded}_texts.cpp" @ONLY CONTENT [[
#define ZT_TEXT(name) __attribute__((section(".zt.txt." name), used)) static const unsigned char
ZT_TEXT("ZTPLUGINUIDS") kManifest[] = {@manifest_bytes@};
ZT_TEXT("MODULE_IDENTIFIER") kIdentifier[] = {@identifier_bytes@};
]])
    target_sources(${name} PRIVATE "${embedded}_texts.cpp")
  endif()
  set_target_properties(${name} PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PRIVATE zentor::plugin)
  _zentor_is_sanitized(is_sanitized)
  if(MINGW)  # the module finds its runtime nowhere but in itself
    target_link_options(${name} PRIVATE -static -Wl,--no-undefined)
  elseif(UNIX AND NOT APPLE AND NOT is_sanitized)
    target_link_options(${name} PRIVATE -Wl,-z,defs)
  endif()
  target_compile_features(${name} PRIVATE cxx_std_17)
  if(NOT arg_NO_INSTALL)
    if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT AND PROJECT_IS_TOP_LEVEL AND DEFINED zentor_PREFIX)
      set_property(CACHE CMAKE_INSTALL_PREFIX PROPERTY VALUE "${zentor_PREFIX}")
    endif()
    install(TARGETS ${name} LIBRARY DESTINATION "${zentor_PLUGIN_SUBDIR}" COMPONENT plugins)
  endif()
endfunction()

# The runtime of sanitizers comes with the program: modules leave its functions open.
function(_zentor_is_sanitized result)
  get_directory_property(options COMPILE_OPTIONS)
  string(TOUPPER "CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}" flags_of_type)
  string(FIND "${CMAKE_CXX_FLAGS} ${${flags_of_type}} ${CMAKE_MODULE_LINKER_FLAGS} ${options}" "-fsanitize=" at)
  if(at EQUAL -1)
    set(${result} FALSE PARENT_SCOPE)
  else()
    set(${result} TRUE PARENT_SCOPE)
  endif()
endfunction()

# The bytes of a file as the elements of an array.
function(_zentor_bytes result path)
  file(READ "${path}" bytes HEX)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
  set(${result} "${bytes}" PARENT_SCOPE)
endfunction()
