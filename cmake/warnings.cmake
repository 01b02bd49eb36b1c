# Warnings for every target of the project.
option(TREMOLANTH_WERROR "Treat warnings as errors" OFF)

function(tremolanth_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow -Wconversion
                           -Wdouble-promotion)
    # GCC 12 at -O2 reports overlapping or uninitialised copies inside std::string's own
    # inlined code (known false positives of -Wrestrict and -Wmaybe-uninitialized). They stay
    # warnings, but may not fail a -Werror build of correct code.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE -Wno-error=restrict
                               -Wno-error=maybe-uninitialized)
    endif()
    if(TREMOLANTH_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
