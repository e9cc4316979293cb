# A fuzz target is one file, tests/fuzz/<subject>_fuzz.cpp, that feeds bytes from outside to one reader of ours.
#
# In every build it becomes fuzz_replay_<subject>, which runs the files of tests/fuzz/corpus/<subject>/ through
# it, as the ctest test fuzz.<subject>: so corpora cannot rot, and what once broke the reader stays mended. With
# KALMORA_FUZZ (preset `fuzz`, clang++) it becomes fuzz_<subject> too, with libFuzzer inside; the target
# kalmora_fuzz builds them all.
if(KALMORA_FUZZ AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "KALMORA_FUZZ needs clang++; use: cmake --preset fuzz")
endif()

function(kalmora_fuzz_target source)
    cmake_parse_arguments(FUZZ "" "" "LINK" ${ARGN})
    get_filename_component(subject ${source} NAME_WE)
    string(REGEX REPLACE "_fuzz$" "" subject ${subject})
    set(corpus ${CMAKE_CURRENT_SOURCE_DIR}/corpus/${subject})

    add_executable(fuzz_replay_${subject} ${source} replay_main.cpp)
    target_link_libraries(fuzz_replay_${subject} PRIVATE ${FUZZ_LINK} kalmora_options)
    add_test(NAME fuzz.${subject} COMMAND fuzz_replay_${subject} ${corpus})
    set_tests_properties(fuzz.${subject} PROPERTIES TIMEOUT 120 ENVIRONMENT QT_QPA_PLATFORM=offscreen)

    if(KALMORA_FUZZ)
        add_executable(fuzz_${subject} ${source})
        target_link_libraries(fuzz_${subject} PRIVATE ${FUZZ_LINK} kalmora_options)
        target_link_options(fuzz_${subject} PRIVATE -fsanitize=fuzzer)
        if(NOT TARGET kalmora_fuzz)
            add_custom_target(kalmora_fuzz)
        endif()
        add_dependencies(kalmora_fuzz fuzz_${subject})
    endif()
endfunction()
