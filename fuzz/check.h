// CHECK(condition): stops the fuzzer with the input at hand when a result
// disagrees with its model; unlike assert it stays in optimised builds.
#pragma once

#include <cstdio>
#include <cstdlib>

#define CHECK(condition)                                                                           \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: CHECK(%s) failed\n", __FILE__, __LINE__, #condition);     \
            std::abort();                                                                          \
        }                                                                                          \
    } while (0)
