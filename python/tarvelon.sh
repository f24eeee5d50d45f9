#!/usr/bin/env bash
# The command `tarvelon` of an installation. The script `tarvelon` in the source tree sources this file for
# the commands that both have; it builds the libraries before it starts the host.
set -euo pipefail

host_usage() {
  cat <<'END'
  run SCRIPT [ARGS]        run a Python script in the host (also: run -, run -c CODE, run -m MODULE)
  shell                    an interactive Python with the packages imported
  describe [--json] [NAME] print a published package, class or enumeration
  show FILE... [PATH]      print the model in files, or one object of it: as a tree (--depth N), or as --json;
                           --foreign counts what has no class
  validate [--json] FILE...
                           print the problems of a saved model; the exit status is 1 if there is an error
  convert IN... OUT        convert between .arxml and .xmi, several files into one (--release R)
  ecore FILE               write the metamodel as an Ecore file, for EMF and PyEcore
  --version                print the version
END
}

usage() {
  printf 'usage: tarvelon COMMAND [ARGUMENTS]\n\n'
  host_usage
  printf '\nStandard output and the exit status are those of the script that runs.\n'
}

self=tarvelon
commands=(run shell describe show validate convert ecore help)
python=/usr/bin/python3

say() { printf 'tarvelon: %s\n' "$*" >&2; }
fail() { say "$@"; exit 1; }
misuse() { say "$1; see $self --help"; exit 2; }

# nearest NAME CANDIDATE...: prints "; did you mean ...?" for the most similar candidate. It may differ in one
# third of its letters (left out, added, replaced or swapped).
nearest() {
  printf '%s\n' "${@:2}" | awk -v name="$1" '
    function least(a, b) { return a < b ? a : b }
    { n = length(name); m = length($0)
      if (n > m + 3 || m > n + 3) next
      for (i = 0; i <= n; i++) for (j = 0; j <= m; j++) {
        if (!i || !j) { d[i, j] = i + j; continue }
        same = substr(name, i, 1) == substr($0, j, 1)
        d[i, j] = least(least(d[i - 1, j], d[i, j - 1]) + 1, d[i - 1, j - 1] + !same)
        if (i > 1 && j > 1 && substr(name, i, 1) == substr($0, j - 1, 1) && substr(name, i - 1, 1) == substr($0, j, 1))
          d[i, j] = least(d[i, j], d[i - 2, j - 2] + 1)
      }
      if (d[n, m] <= least(int(n / 3) + (n < 3), 3) && (best == "" || d[n, m] < distance)) {
        best = $0; distance = d[n, m] } }
    END { if (best != "") printf "; did you mean \047%s\047?", best }'
}

version() { printf '@PROJECT_VERSION@\n'; }

# Sets `packages` to the folder of Tarvelon and K7Q, relative to this file. The installation may be moved, and
# this file may be a symbolic link.
find_packages() {
  local from
  from=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
  packages=$(readlink -e -- "$from/@TARVELON_PYTHON_FROM_BIN@") ||
    fail "the Python packages are missing: expected them in $from/@TARVELON_PYTHON_FROM_BIN@; install Tarvelon again"
}

# Preparations before the host can start; the source tree's script overrides it.
prepare() { :; }

# host ARGS...: replaces this process with the Python interpreter, with our packages on its path.
host() {
  PYTHONPATH=$packages${PYTHONPATH:+:$PYTHONPATH} exec "$python" "$@"
}

command_run() {
  (($#)) || misuse "run needs a script"
  if [[ $1 != -* && ! -e $1 ]]; then
    local beside=("$(dirname -- "$1")"/*.py)
    fail "no such script: $1$([[ ! -e ${beside[0]} ]] || nearest "$1" "${beside[@]#./}")"
  fi
  prepare
  # -P: a script's folder must not be on the path. Otherwise examples/collections.py would hide Python's own
  # module.
  [[ $1 == -* ]] || set -- -P "$@"
  host "$@"
}

# -P: a folder in the working directory with the name of one of our packages must not hide that package.
command_shell() {
  prepare
  host -i -P -m Tarvelon.shell "$@"
}

command_module() {
  prepare
  host -P -m "Tarvelon.$1" "${@:2}"
}

# host_command COMMAND [ARGUMENTS]: a command that is not built in is a module of the package Tarvelon.
host_command() {
  case ${1:-} in
    run | shell) "command_$1" "${@:2}" ;;
    --version) printf 'tarvelon %s\n' "$(version)" ;;
    -h | --help | help) usage ;;
    '') usage >&2; exit 2 ;;
    *)
      [[ $1 =~ ^[a-z][a-z0-9_]*$ && -f $packages/Tarvelon/$1.py ]] ||
        misuse "there is no command '$1'$(nearest "$1" "${commands[@]}")"
      command_module "$@"
      ;;
  esac
}

[[ ${BASH_SOURCE[0]} == "$0" ]] || return 0
find_packages
case ${1:-} in
  build | test | fuzz | bench | format | docs | install) misuse "$1 works only in a source tree, as ./tarvelon $1" ;;
  *) host_command "$@" ;;
esac
