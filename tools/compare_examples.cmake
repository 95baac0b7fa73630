# Regenerates the example test files and gauge records into OUTPUT and fails unless each equals its
# committed copy in EXPECTED (and no committed example is missing from the output).
file(REMOVE_RECURSE ${OUTPUT})
execute_process(COMMAND ${GENERATOR} ${OUTPUT} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "the example generator failed (${status})")
endif()
file(GLOB generated RELATIVE ${OUTPUT} ${OUTPUT}/*.zvt ${OUTPUT}/*.csv)
file(GLOB committed RELATIVE ${EXPECTED} ${EXPECTED}/*.zvt ${EXPECTED}/*.csv)
if(NOT generated STREQUAL committed)
    message(FATAL_ERROR "generated examples '${generated}' but examples/ holds '${committed}'")
endif()
foreach(name IN LISTS generated)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT}/${name}
                            ${EXPECTED}/${name}
                    RESULT_VARIABLE differs)
    if(differs)
        message(FATAL_ERROR "examples/${name} differs from what the generator writes "
                            "(regenerate with the regenerate-examples target)")
    endif()
endforeach()
