# Self-contained programs: qx_program(target). On Windows they have version information, and support
# long file names where the system has them enabled.
if(MINGW)
    enable_language(RC)
    string(REPLACE "." "," QX_VERSION_COMMAS "${PROJECT_VERSION},0")
endif()

# The resources of a Windows program: its version, this manifest, and an icon if one is given.
function(qx_resources target manifest)
    set(QX_PROGRAM ${target})
    set(QX_ICON "")
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}-resources)
    if(ARGN)
        get_filename_component(icon ${ARGN} NAME)
        set(QX_ICON "IDI_ICON1 ICON \"${icon}\"")
        configure_file(${ARGN} ${folder}/${icon} COPYONLY)
    endif()
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${folder}/${target}.rc @ONLY)
    configure_file(${manifest} ${folder}/program.manifest COPYONLY)
    target_sources(${target} PRIVATE ${folder}/${target}.rc)
    target_include_directories(${target} PRIVATE $<$<COMPILE_LANGUAGE:RC>:${folder}>)
endfunction()

function(qx_program target)
    if(MINGW)
        qx_resources(${target} ${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest)
        target_link_options(${target} PRIVATE -static -s -Wl,--gc-sections)
    endif()
endfunction()
