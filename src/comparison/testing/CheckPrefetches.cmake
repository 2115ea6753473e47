# Fails unless the comparison run of the built library holds prefetch
# instructions: its walks ask memory ahead for the records of their next
# steps, and a compiler that drops those requests (GCC drops calls to a
# function it takes for one without effect) leaves the run correct but
# several times slower, which no other test would notice.
#
# cmake -DOBJDUMP=<objdump> -DLIBRARY=<shared library> -P CheckPrefetches.cmake
set(run_symbol _ZN21VEKZOLGraphComparator13RunComparisonEb)
execute_process(
  COMMAND ${OBJDUMP} -d --no-show-raw-insn --disassemble=${run_symbol} ${LIBRARY}
  OUTPUT_VARIABLE listing
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${OBJDUMP} could not read ${LIBRARY}")
endif()
string(REGEX MATCHALL "\tprefetch[a-z0-9]*[ \t]" prefetches "${listing}")
list(LENGTH prefetches count)
# Two passes over vertices ask for each step's vertex, object, parent edge,
# parent and their texts on both sides: far more than this.
if(count LESS 16)
  message(FATAL_ERROR "RunComparison holds ${count} prefetch instructions; expected at least 16")
endif()
message(STATUS "RunComparison holds ${count} prefetch instructions")
