# A room is one static library with the house's warnings. Rooms list their sources one by one, so that
# the platform is chosen by source lists and never by #if.
#
#   tolvan_room(<name> SOURCES <file>... [LINKS <target>...] [PRIVATE_LINKS <target>...])
#
# LINKS are the rooms whose headers its own headers use; PRIVATE_LINKS are libraries that only its .cpp files see.
add_library(tolvan_house INTERFACE)
target_include_directories(tolvan_house INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(tolvan_house INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
  -Woverloaded-virtual -Werror)
# GCC 12 sees overlapping copies in "literal" + std::string at -O3 where there are none (its bug 105651).
target_compile_options(tolvan_house INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

function(tolvan_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(tolvan_${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(tolvan_${name} PUBLIC tolvan_house ${ROOM_LINKS} PRIVATE ${ROOM_PRIVATE_LINKS})
  # Several sources in one compilation, where the preset asks for it; the sanitizers, the release and Windows compile each
  # alone, so that a missing include shows.
  if(TOLVAN_UNITY)
    set_target_properties(tolvan_${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
  endif()
  # What a module carries must be able to lie anywhere.
  if(name MATCHES "^(base|host|system|sql|odbc|spreadsheet|network|xml)$")
    set_target_properties(tolvan_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  endif()
endfunction()

# tolvan_module(<name> <room> <file>...): the library libtolvan_<name>.so beside the programs, made of the target <room>
# of a provider and the files of its entry points, for a program to load when it first needs it. It carries
# its own copy of what it uses of the rooms below, and shows nothing but its entry points.
function(tolvan_module name room)
  add_library(tolvan_${name}_module MODULE ${ARGN})
  target_link_libraries(tolvan_${name}_module PRIVATE tolvan_house ${room})
  target_link_options(tolvan_${name}_module PRIVATE LINKER:--exclude-libs,ALL)
  set_target_properties(tolvan_${name}_module PROPERTIES
    OUTPUT_NAME tolvan_${name}
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  install(TARGETS tolvan_${name}_module LIBRARY DESTINATION lib/tolvan-impexp)
endfunction()
