# Splits src/ into the pure computational core and the Qt screens: a file belongs
# to the screens exactly when one of its folders is named ui.
function(zorvekan_collect_sources core_var gui_var)
    file(GLOB_RECURSE all CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/*.cpp)
    set(core "")
    set(gui "")
    foreach(f IN LISTS all)
        if(f MATCHES "/ui/")
            list(APPEND gui ${f})
        else()
            list(APPEND core ${f})
        endif()
    endforeach()
    set(${core_var} ${core} PARENT_SCOPE)
    set(${gui_var} ${gui} PARENT_SCOPE)
endfunction()

# zorvekan_add_test(name SOURCES ... [QT]) builds one test program and registers it.
# Core tests use GoogleTest; screen tests use Qt Test and run offscreen.
function(zorvekan_add_test name)
    cmake_parse_arguments(ARG "QT" "" "SOURCES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_compile_definitions(${name} PRIVATE TEST_DATA_DIR="${CMAKE_SOURCE_DIR}/tests/data"
                                               SOURCE_DIR="${CMAKE_SOURCE_DIR}")
    if(ARG_QT)
        target_link_libraries(${name} PRIVATE zorvekan_app Qt6::Test)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
                                                WORKING_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    else()
        target_link_libraries(${name} PRIVATE zorvekan_core GTest::gtest GTest::gmock GTest::gtest_main)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES WORKING_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    endif()
endfunction()
