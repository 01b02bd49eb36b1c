# Fails when a header or source of the portable core reaches for the Windows API.
# Run as: cmake -DROOT=<source dir> -P portable_check.cmake
file(GLOB_RECURSE candidates
    ${ROOT}/link/*.h ${ROOT}/link/*.cpp
    ${ROOT}/model/*.h ${ROOT}/model/*.cpp
    ${ROOT}/panel/*.h ${ROOT}/panel/*.cpp
    ${ROOT}/editors/*.h ${ROOT}/editors/*.cpp
    ${ROOT}/dataview/*.h ${ROOT}/dataview/*.cpp
    ${ROOT}/platform/*.h ${ROOT}/platform/*.cpp)
set(bad "")
foreach(f ${candidates})
    # Windows-only code lives in win32/ folders.
    if(f MATCHES "/win32/")
        continue()
    endif()
    file(STRINGS ${f} hits REGEX "#[ \t]*include[ \t]*[<\"](windows|winsock2|ws2tcpip|ws2bth|commctrl|winuser|winbase|aygshell|shellapi|shlobj)\\.h[>\"]")
    if(hits)
        list(APPEND bad "${f}: ${hits}")
    endif()
endforeach()
if(bad)
    string(REPLACE ";" "\n" bad "${bad}")
    message(FATAL_ERROR "The portable core includes Windows headers:\n${bad}")
endif()
message(STATUS "portable core: no Windows headers")
