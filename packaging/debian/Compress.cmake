# Compresses manual pages and changelogs, as Debian's packages have them.
file(GLOB_RECURSE files ${CPACK_TEMPORARY_DIRECTORY}/*/share/man/* ${CPACK_TEMPORARY_DIRECTORY}/*/share/doc/*/changelog*)
if(files)
    execute_process(COMMAND gzip -9n ${files} COMMAND_ERROR_IS_FATAL ANY)
endif()
