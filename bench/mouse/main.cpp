// mouse_bench [strokes|ticks]: what the pen costs at each message of the mouse, and the monitor timer at each tick.

#include <cstdio>
#include <cstring>
#include <exception>

#include "bench/mouse/bench_desk.h"
#include "bench/mouse/strokes.h"
#include "bench/mouse/ticks.h"

int main(int argc, char** argv)
{
    try {
        bench::BenchDesk desk;
        const char* part = argc > 1 ? argv[1] : "";
        if (std::strcmp(part, "ticks") != 0)
            bench::benchStrokes(desk);
        if (std::strcmp(part, "strokes") != 0)
            bench::benchTicks(desk);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
