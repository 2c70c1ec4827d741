# tolvan_utf8proc: Debian's library on Linux. For Windows there is no package; the source of the same package is
# fetched by tools/windows-deps into TOLVAN_WINDOWS_DEPS and compiled here.
add_library(tolvan_utf8proc INTERFACE)
if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  set(TOLVAN_WINDOWS_DEPS "$ENV{HOME}/.cache/tolvan-windows" CACHE PATH "Folder filled by tools/windows-deps")
  enable_language(C)
  add_library(tolvan_utf8proc_source STATIC ${TOLVAN_WINDOWS_DEPS}/utf8proc/utf8proc.c)
  target_include_directories(tolvan_utf8proc_source SYSTEM PUBLIC ${TOLVAN_WINDOWS_DEPS}/utf8proc)
  target_compile_definitions(tolvan_utf8proc_source PUBLIC UTF8PROC_STATIC)
  target_link_libraries(tolvan_utf8proc INTERFACE tolvan_utf8proc_source)
else()
  target_link_libraries(tolvan_utf8proc INTERFACE utf8proc)
endif()
