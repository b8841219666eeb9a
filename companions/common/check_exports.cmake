# Fails unless LIBRARY exports exactly the nine names of a decoder.
#   cmake -D OBJDUMP=<objdump> -D LIBRARY=<dll> -P check_exports.cmake
set(wanted Close Create DecodeBlock DeleteATag Destroy Get Open Set SetPosition)

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY}
  OUTPUT_VARIABLE listing RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "${OBJDUMP} cannot read ${LIBRARY}")
endif()

# The rows behind "[Ordinal/Name Pointer] Table": "  [   0] Close".
string(FIND "${listing}" "[Ordinal/Name Pointer] Table" start)
if(start EQUAL -1)
  message(FATAL_ERROR "${LIBRARY} has no export table")
endif()
string(SUBSTRING "${listing}" ${start} -1 table)
string(REGEX MATCHALL "\n[ \t]+\\[ *[0-9]+\\][^\n]*" rows "${table}")
set(found)
foreach(row IN LISTS rows)
  string(REGEX REPLACE ".* ([^ ]+)$" "\\1" name "${row}")
  list(APPEND found ${name})
endforeach()
list(SORT found)

if(NOT "${found}" STREQUAL "${wanted}")
  message(FATAL_ERROR "${LIBRARY} exports ${found}, wanted ${wanted}")
endif()
message(STATUS "${LIBRARY} exports the nine names and no other")
