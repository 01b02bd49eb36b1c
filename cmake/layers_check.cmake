# Fails when an include runs against the layers of the program, top to bottom:
#
#   app/                                  the Windows program
#   panel/ editors/ dataview/             the views (their windows in win32/ folders)
#   shell/                                what every full-screen window shares (Windows)
#   link/                                 the link to the device
#   model/                                the controls and the per-panel settings
#   platform/                             the operating-system seams
#
# A file may include its own layer and the ones below, never one above. Outside win32/ folders,
# app/ and shell/, nothing reaches for the Windows API, the shell or the resources. The device
# side (device/) builds on the portable core only. Tests, benchmarks and fuzz targets may
# include anything.
#
# Run as: cmake -DROOT=<source dir> -P layers_check.cmake
set(rank_platform 0)
set(rank_model 1)
set(rank_link 2)
set(rank_shell 3)
set(rank_res 3)
set(rank_panel 4)
set(rank_editors 4)
set(rank_dataview 4)
set(rank_app 5)

set(windows_headers "windows|winsock2|ws2tcpip|ws2bth|commctrl|winuser|winbase|aygshell|shellapi|shlobj|commdlg")

file(GLOB_RECURSE candidates
    ${ROOT}/platform/*.h ${ROOT}/platform/*.cpp
    ${ROOT}/model/*.h ${ROOT}/model/*.cpp
    ${ROOT}/link/*.h ${ROOT}/link/*.cpp
    ${ROOT}/shell/*.h ${ROOT}/shell/*.cpp
    ${ROOT}/panel/*.h ${ROOT}/panel/*.cpp
    ${ROOT}/editors/*.h ${ROOT}/editors/*.cpp
    ${ROOT}/dataview/*.h ${ROOT}/dataview/*.cpp
    ${ROOT}/app/*.h ${ROOT}/app/*.cpp
    ${ROOT}/device/*.h ${ROOT}/device/*.cpp)

set(bad "")
foreach(f ${candidates})
    file(RELATIVE_PATH rel ${ROOT} ${f})
    string(REGEX MATCH "^[^/]+" layer "${rel}")
    set(windows_side FALSE)
    if(rel MATCHES "/win32/" OR layer STREQUAL "app" OR layer STREQUAL "shell")
        set(windows_side TRUE)
    endif()

    file(STRINGS ${f} includes REGEX "^[ \t]*#[ \t]*include[ \t]*[<\"]")
    foreach(line ${includes})
        if(line MATCHES "[<\"](${windows_headers})\\.h[>\"]" AND NOT windows_side)
            list(APPEND bad "${rel}: the Windows API outside the Windows side: ${line}")
            continue()
        endif()
        if(NOT line MATCHES "\"([a-z_]+)/([^\"]+)\"")
            continue()
        endif()
        set(target "${CMAKE_MATCH_1}")
        set(target_path "${CMAKE_MATCH_1}/${CMAKE_MATCH_2}")

        if(layer STREQUAL "device")
            if(NOT target MATCHES "^(device|link|model|panel|platform)$" OR
               target_path MATCHES "/win32/")
                list(APPEND bad "${rel}: the device side reaches for ${target_path}")
            endif()
            continue()
        endif()

        if(NOT DEFINED rank_${target})
            list(APPEND bad "${rel}: includes ${target_path}, which is no layer")
            continue()
        endif()
        if(rank_${target} GREATER rank_${layer})
            list(APPEND bad "${rel}: includes ${target_path}, a layer above ${layer}/")
            continue()
        endif()
        if(NOT windows_side AND
           (target STREQUAL "shell" OR target STREQUAL "res" OR target_path MATCHES "/win32/"))
            list(APPEND bad "${rel}: portable code includes the Windows side's ${target_path}")
        endif()
    endforeach()
endforeach()

if(bad)
    string(REPLACE ";" "\n  " bad "${bad}")
    message(FATAL_ERROR "Includes against the layers:\n  ${bad}")
endif()
