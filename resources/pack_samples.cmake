# Packs a folder of sheets into an archive without a word: cmake -DTOOL= -DFOLDER= -DARCHIVE= -P.
# It is packed beside its place and then moved, so that a packing that fails leaves the old one.
file(REMOVE ${ARCHIVE}.new)
execute_process(COMMAND ${TOOL} archive import ${ARCHIVE}.new ${FOLDER}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${ARCHIVE}.new ${ARCHIVE})
