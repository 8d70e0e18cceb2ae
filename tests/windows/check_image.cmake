# What must hold of the DLL's file and of the objects it is linked from.
#   cmake -D LIBRARY=... -D OBJECTS=a|b|... -D OBJDUMP=... -D VERSION=... -P check_image.cmake
execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n]+" needed "${headers}")
list(TRANSFORM needed REPLACE "DLL Name: " "")
list(LENGTH needed count)
set(foreign ${needed})
list(FILTER foreign EXCLUDE REGEX "^(KERNEL32|msvcrt)\\.dll$")
if(foreign OR count EQUAL 0)
  message(FATAL_ERROR "${LIBRARY} needs other DLLs than the system's: ${foreign}")
endif()

# Of the x87 unit a double may pass through on its way from a
# function (load, store, sign), but nothing may be computed there.
string(REPLACE "|" ";" OBJECTS "${OBJECTS}")
execute_process(COMMAND ${OBJDUMP} -d --no-show-raw-insn ${OBJECTS}
  OUTPUT_VARIABLE code COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\tf[a-z0-9]+" used "${code}")
list(REMOVE_DUPLICATES used)
list(TRANSFORM used STRIP)
set(computing ${used})
list(FILTER computing EXCLUDE REGEX "^(fld|fldl|fld1|fldz|fst|fstl|fstp|fstpl|fabs|fchs|fxch)$")
if(computing OR NOT used)
  message(FATAL_ERROR "x87 instructions that compute or round: ${computing}")
endif()
if(NOT code MATCHES "\tmulsd")
  message(FATAL_ERROR "no SSE2 arithmetic was found")
endif()

# The version resource holds its text as UTF-16.
file(READ ${LIBRARY} image HEX)
string(HEX "${VERSION}" version)
string(REGEX REPLACE "(..)" "\\100" version "${version}")
string(HEX "FileVersion" key)
string(REGEX REPLACE "(..)" "\\100" key "${key}")
if(NOT image MATCHES "${key}0000(0000)?${version}")
  message(FATAL_ERROR "no version resource with ${VERSION}")
endif()
message("needs ${needed}; x87 only passes doubles on: ${used}; version ${VERSION}")
