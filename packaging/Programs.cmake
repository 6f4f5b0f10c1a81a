# Programs that need nothing beside them: qx_program(target). On Windows they say what they are, and
# take long names of files where the system is set up for them.
if(MINGW)
    enable_language(RC)
    string(REPLACE "." "," QX_VERSION_COMMAS "${PROJECT_VERSION},0")
endif()

function(qx_program target)
    if(NOT MINGW)
        return()
    endif()
    set(QX_PROGRAM ${target})
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${target}-resources)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.rc.in ${folder}/${target}.rc @ONLY)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/program.manifest
                   ${folder}/program.manifest COPYONLY)
    target_sources(${target} PRIVATE ${folder}/${target}.rc)
    target_include_directories(${target} PRIVATE $<$<COMPILE_LANGUAGE:RC>:${folder}>)
    target_link_options(${target} PRIVATE -static -s -Wl,--gc-sections)
endfunction()
