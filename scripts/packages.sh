# What building takes, and what testing takes on top of it. Sourced by the other scripts.
# shellcheck shell=sh disable=SC2034
build_packages="g++ cmake ninja-build libpugixml-dev libcli11-dev libexpat1-dev libfmt-dev
libtomlplusplus-dev libutf8proc-dev nlohmann-json3-dev"
test_packages="$build_packages libgtest-dev clang-format fish ghdl groff-base gtkwave iverilog pkg-config
python3 python3-jsonschema zsh"
bench_packages="$build_packages libbenchmark-dev libtinyxml2-dev libxml2-dev"
long_test_packages="$bench_packages chromium clang-tidy"
fuzz_packages="$build_packages clang libclang-rt-dev llvm"
