# WebAssembly for browsers and Node, built by Emscripten as Debian packages it.
# The programs' JavaScript needs NODE_PATH=/usr/share/nodejs to be optimised: the preset
# sets it.
set(EMSCRIPTEN_SYSTEM_PROCESSOR wasm32)  # not the default, x86, which would have SSE2 asked for
execute_process(COMMAND em-config EMSCRIPTEN_ROOT
  OUTPUT_VARIABLE emscripten_root OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
include(${emscripten_root}/cmake/Modules/Platform/Emscripten.cmake)

# WebAssembly's own exceptions: without a glue of JavaScript around every call that may throw.
set(CMAKE_CXX_FLAGS_INIT -fwasm-exceptions)
