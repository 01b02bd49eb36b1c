# Warnings for every target of the project.
option(TREMOLANTH_WERROR "Treat warnings as errors" OFF)

function(tremolanth_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    # GCC 12 reports overlapping copies inside std::string's own operator+ at -O2 (a known
    # false positive of -Wrestrict); it would fail -Werror builds on correct code.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    if(TREMOLANTH_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
