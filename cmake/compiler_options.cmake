# Warnings are errors for everything we wrote; sanitizers come from the preset.
add_library(kalmora_options INTERFACE)
target_compile_options(kalmora_options INTERFACE
    -Wall -Wextra -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-qual -Wformat=2 -Werror)
if(KALMORA_SANITIZE)
    add_compile_options(-fsanitize=${KALMORA_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${KALMORA_SANITIZE})
    if(KALMORA_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND (KALMORA_SANITIZE OR CMAKE_UNITY_BUILD))
    # GCC's flow analysis warns of impossible values once the sanitizers have rewritten the code, and in the strings of
    # joined files, where more is inlined.
    target_compile_options(kalmora_options INTERFACE -Wno-maybe-uninitialized -Wno-stringop-overflow
        -Wno-stringop-overread -Wno-array-bounds -Wno-restrict)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # A record that names its first fields and leaves the rest to their defaults is meant.
    target_compile_options(kalmora_options INTERFACE -Wno-missing-field-initializers)
endif()
