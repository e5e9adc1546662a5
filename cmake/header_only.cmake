# The header-only libraries, as system includes. The cross build must not see the native include folder, so it gets a
# folder with links to just these.
set(ZENTOR_HEADER_ROOT /usr/include CACHE PATH "Where rapidjson, boost and CLI stand")

set(header_folder ${ZENTOR_HEADER_ROOT})
if(CMAKE_CROSSCOMPILING)
  set(header_folder ${CMAKE_BINARY_DIR}/header-only)
  file(MAKE_DIRECTORY ${header_folder})
  foreach(name rapidjson boost CLI)
    file(CREATE_LINK ${ZENTOR_HEADER_ROOT}/${name} ${header_folder}/${name} SYMBOLIC)
  endforeach()
endif()

foreach(header rapidjson/document.h boost/variant.hpp CLI/CLI.hpp)
  if(NOT EXISTS ${header_folder}/${header})
    message(FATAL_ERROR "${header} not found below ${ZENTOR_HEADER_ROOT}")
  endif()
endforeach()

add_library(zentor_header_only INTERFACE)
if(NOT header_folder STREQUAL /usr/include)  # which is searched anyway
  target_include_directories(zentor_header_only SYSTEM INTERFACE ${header_folder})
endif()
