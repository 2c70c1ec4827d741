# Shared by the shell scripts of this folder and by ./start, ./test and ./bench: talking, the cache folder, rights.
# Sourced, never run. Scripts for shopkeepers set TOLVAN_SCRIPT_LANGUAGE=es before they use it.

TOLVAN_TREE=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# What is fetched or made once and is not part of the tree. CMake asks the same variable (cmake/CacheFolder.cmake).
TOLVAN_CACHE=${XDG_CACHE_HOME:-$(cd ~ && pwd)/.cache}/tolvan

# in_language ENGLISH SPANISH
in_language() {
  if [ "${TOLVAN_SCRIPT_LANGUAGE:-en}" = es ]; then printf '%s' "$2"; else printf '%s' "$1"; fi
}

say() { printf '\n== %s\n' "$*"; }

fail() {
  printf '\n%s: %s\n' "$(in_language ERROR ERROR)" "$*" >&2
  exit 1
}

# The words to put before a command that needs root: none, or sudo. Fails when there is no way to be root.
# A password is asked only where somebody can type it.
root_prefix() {
  if [ "$(id -u)" -eq 0 ]; then return 0; fi
  command -v sudo >/dev/null || return 1
  if sudo -n true 2>/dev/null; then echo 'sudo -n'; return 0; fi
  if [ -t 0 ] && [ -t 2 ]; then echo sudo; return 0; fi
  return 1
}

# timed TEXT COMMAND...: runs the command under a heading and tells how long it took.
timed() {
  local text=$1 begin=$SECONDS
  shift
  say "$text"
  "$@" || return
  printf -- '-- %s\n' "$(in_language "done in $((SECONDS - begin)) s" "listo en $((SECONDS - begin)) s")"
}
