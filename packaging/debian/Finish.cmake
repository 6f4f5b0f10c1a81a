# Finishes the files of the packages as debhelper does: compresses manual pages and changelogs, and
# strips static libraries, which "install" leaves as they are.
file(GLOB_RECURSE files ${CPACK_TEMPORARY_DIRECTORY}/*)
set(texts ${files})
list(FILTER texts INCLUDE REGEX "/share/(man/|doc/[^/]+/changelog)")
execute_process(COMMAND gzip -9n ${texts} COMMAND_ERROR_IS_FATAL ANY)
list(FILTER files INCLUDE REGEX "[.]a$")
execute_process(COMMAND strip --strip-debug --enable-deterministic-archives
                        --remove-section=.comment --remove-section=.note ${files}
                COMMAND_ERROR_IS_FATAL ANY)
