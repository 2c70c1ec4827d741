# TOLVAN_CACHE_FOLDER: what the scripts fetch or make once and is not part of the tree (tools/lib.sh has the same rule).
if(DEFINED ENV{XDG_CACHE_HOME})
  set(TOLVAN_CACHE_FOLDER "$ENV{XDG_CACHE_HOME}/tolvan")
else()
  set(TOLVAN_CACHE_FOLDER "$ENV{HOME}/.cache/tolvan")
endif()
