# Regenerates the type-curve library into OUTPUT and fails unless every file equals its
# committed copy in EXPECTED, naming the first line that differs.
file(REMOVE_RECURSE ${OUTPUT})
execute_process(COMMAND ${GENERATOR} ${OUTPUT} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "the generator failed (${status})")
endif()
foreach(name ONETYPE FRCTYPE TWOTYPE)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${OUTPUT}/${name}
                            ${EXPECTED}/${name}
                    RESULT_VARIABLE differs)
    if(differs)
        file(STRINGS ${OUTPUT}/${name} generated)
        file(STRINGS ${EXPECTED}/${name} committed)
        list(LENGTH generated count)
        set(line 0)
        foreach(text IN LISTS generated)
            list(LENGTH committed committed_count)
            if(line GREATER_EQUAL committed_count)
                set(other "<end of file>")
            else()
                list(GET committed ${line} other)
            endif()
            math(EXPR line "${line} + 1")
            if(NOT text STREQUAL other)
                message(FATAL_ERROR "${name} differs from data/${name} at line ${line}: "
                                    "generated '${text}', committed '${other}' "
                                    "(regenerate with the regenerate-type-curves target)")
            endif()
        endforeach()
        message(FATAL_ERROR "${name} differs from data/${name} after line ${count}")
    endif()
endforeach()
message(STATUS "the library in ${EXPECTED} is what the models give")
