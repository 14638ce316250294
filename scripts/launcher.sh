# Sourced by the build scripts: the CMake arguments every project build takes. Warnings are
# fatal for our own builds; ccache speeds rebuilds when it is installed.
# shellcheck shell=bash
project_cmake_args=(-G Ninja -DVXLOCFMT_WERROR=ON)
if command -v ccache >/dev/null; then
  project_cmake_args+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
