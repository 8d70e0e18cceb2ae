# Compiler settings that every target of the project shares.
#
# zelvan_flags: strict IEEE double arithmetic on every target (no contraction
# into fused operations; on 32-bit x86 SSE2 instead of the x87 unit), warnings,
# and the sanitizers when asked for.

add_library(zelvan_flags INTERFACE)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(zelvan_flags INTERFACE
    -ffp-contract=off
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wdouble-promotion
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual>)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86")
    # Hosts of 32-bit Windows keep the stack aligned to 4 bytes; SSE2 spills need 16.
    target_compile_options(zelvan_flags INTERFACE -msse2 -mfpmath=sse -mstackrealign)
  endif()
  if(MINGW)
    # No other DLL than the system's own, and the same file for the same source.
    target_link_options(zelvan_flags INTERFACE -static -Wl,--no-insert-timestamp)
  endif()
  if(ZELVAN_WERROR)
    target_compile_options(zelvan_flags INTERFACE -Werror)
  endif()
  if(ZELVAN_SANITIZE)
    set(sanitizers -fsanitize=address,undefined,float-cast-overflow -fno-sanitize-recover=all)
  elseif(ZELVAN_SANITIZE_THREADS)
    set(sanitizers -fsanitize=thread)
  endif()
  if(DEFINED sanitizers)
    target_compile_options(zelvan_flags INTERFACE ${sanitizers} -fno-omit-frame-pointer)
    target_link_options(zelvan_flags INTERFACE ${sanitizers})
  endif()
elseif(MSVC)
  target_compile_options(zelvan_flags INTERFACE /W4 /fp:strict)
endif()
