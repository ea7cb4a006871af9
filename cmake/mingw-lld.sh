#!/bin/sh
# What `g++ -wrapper` runs in the place of GCC's own programs: the link itself is done by LLVM's linker, which takes a
# hundredth of the time. GCC for MinGW-w64 knows it only by a name that Debian does not give it.
case $1 in
    */collect2)
        shift
        exec ld.lld "$@"
        ;;
    *) exec "$@" ;;
esac
