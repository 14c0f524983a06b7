# zel_embed(ROOM HEADER NAMESPACE files...): the room's library holds the files, as HEADER declares them in NAMESPACE.
# zel_embed_table(ROOM HEADER NAMESPACE TABLE files...): the same as one table, TABLE and TABLECount.
set(ZEL_EMBED ${CMAKE_CURRENT_LIST_DIR}/embed.cmake)
function(zel_embed room header namespace)
    zel_embed_table(${room} ${header} ${namespace} "" ${ARGN})
endfunction()
function(zel_embed_table room header namespace table)
    list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ OUTPUT_VARIABLE files)
    set(embedded ${CMAKE_CURRENT_BINARY_DIR}/${room}_texts.cpp)
    string(REPLACE ";" "$<SEMICOLON>" files_argument "${files}")
    add_custom_command(OUTPUT ${embedded}
        COMMAND ${CMAKE_COMMAND} "-DIN=${files_argument}" -DOUT=${embedded} -DHEADER=${header} -DNAMESPACE=${namespace}
            "-DTABLE=${table}" -P ${ZEL_EMBED}
        DEPENDS ${files} ${ZEL_EMBED} VERBATIM)
    target_sources(zel_${room} PRIVATE ${embedded})
endfunction()
