#!/bin/sh
# Measures the numeric kernels beside their anchors, the script language beside plain loops, and the drawing of images. Arguments go to the
# benchmark programs, for example
#   ./bench.sh --benchmark_filter=fft
set -e
cd "$(dirname "$0")"
cmake --preset bench
cmake --build --preset bench --target norva_bench trelva_bench image_drawing_bench
build/bench/bench/norva_bench --benchmark_counters_tabular=true "$@"
build/bench/bench/trelva_bench "$@"
QT_QPA_PLATFORM=offscreen build/bench/bench/image_drawing_bench "$@"
