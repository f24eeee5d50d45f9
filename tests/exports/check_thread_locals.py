"""Checks the thread-local variables of shared libraries.

usage: check_thread_locals.py READELF LIBRARY...

By default, a function finds a thread_local variable at run time. At a thread's first use of the variable, this function
may allocate memory, and it ends the process if there is none. The variables of these libraries have a fixed place
instead (TARVELON_THREAD_LOCAL). The space for such variables is small, and all libraries of a process share it.
"""

import subprocess
import sys

MOST_BYTES = 512
CURE = "Declare it TARVELON_THREAD_LOCAL, constant-initialised and without a destructor, or make it smaller."


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def asks_at_run_time(readelf, library):
    """Whether the library calls the function that finds a thread-local variable at run time."""
    return "__tls_get_addr" in output_of(readelf, "--wide", "--dyn-syms", library)


def bytes_for_each_thread(readelf, library):
    """The number of bytes that the library needs for each thread."""
    for line in output_of(readelf, "--wide", "--program-headers", library).splitlines():
        words = line.split()
        if words and words[0] == "TLS":
            return int(words[5], 16)
    return 0


def faults(readelf, libraries):
    """One line for each library that finds variables at run time, and one if all libraries together need
    too much."""
    lines = [f"{library} asks for a thread_local at run time" for library in libraries if asks_at_run_time(readelf, library)]
    total = sum(bytes_for_each_thread(readelf, library) for library in libraries)
    if total > MOST_BYTES:
        lines.append(f"the libraries keep {total} bytes for each thread, {MOST_BYTES} at most")
    return lines


def main(arguments):
    if len(arguments) < 2:
        sys.exit(__doc__)
    readelf, *libraries = arguments
    lines = faults(readelf, libraries)
    print("\n".join(lines + [CURE] if lines else [f"{len(libraries)} libraries"]))
    return 1 if lines else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
