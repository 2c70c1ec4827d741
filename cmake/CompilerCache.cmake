# Compiles through ccache where it is installed; nothing depends on it.
find_program(TOLVAN_CCACHE ccache)
if(TOLVAN_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TOLVAN_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${TOLVAN_CCACHE})
endif()
