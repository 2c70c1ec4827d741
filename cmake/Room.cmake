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
endfunction()
