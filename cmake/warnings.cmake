# Warnings for every target of the project.
option(TREMOLANTH_WERROR "Treat warnings as errors" OFF)

function(tremolanth_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    if(TREMOLANTH_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()
