#ifndef BENCH_BENCH_H
#define BENCH_BENCH_H

/// The whole program, given the arguments of main.
int bench(int argc, char** argv);

#endif
