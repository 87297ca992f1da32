#!/bin/sh
# Measures the numeric kernels beside their anchors, as a table for bench/README.md, the script language beside plain
# loops, and the drawing of images. Takes some minutes, 2 GB of memory and 512 MB of the folder for temporary files.
# Arguments go to the benchmark programs, for example
#   ./bench.sh --benchmark_filter=fft
set -e
cd "$(dirname "$0")"
cmake --preset bench
cmake --build --preset bench --target norva_bench trelva_bench image_drawing_bench
build/bench/bench/norva_bench "$@"
build/bench/bench/trelva_bench "$@"
QT_QPA_PLATFORM=offscreen build/bench/bench/image_drawing_bench "$@"
