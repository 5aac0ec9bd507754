// desk_bench [strokes|ticks|requests SHEET]: what the pen costs at each message of the mouse, the monitor timer at each
// tick, and a request of the worker on a raster file.

#include <cstdio>
#include <cstring>
#include <exception>

#include "bench/desk/bench_desk.h"
#include "bench/desk/requests.h"
#include "bench/desk/strokes.h"
#include "bench/desk/ticks.h"

int main(int argc, char** argv)
{
    try {
        bench::BenchDesk desk;
        const char* part = argc > 1 ? argv[1] : "";
        const bool all = argc < 2;
        if (all || std::strcmp(part, "strokes") == 0)
            bench::benchStrokes(desk);
        if (all || std::strcmp(part, "ticks") == 0)
            bench::benchTicks(desk);
        if (argc > 2 && std::strcmp(part, "requests") == 0)
            bench::benchRequests(desk, argv[2]);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
