#include "Bench.h"

int main(int argc, char** argv) {
    return bench(argc, argv);
}
