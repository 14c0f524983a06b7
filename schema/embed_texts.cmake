# zel_embed(ROOM HEADER NAMESPACE files...): the room's library holds the files, as HEADER declares them in NAMESPACE.
set(ZEL_EMBED ${CMAKE_CURRENT_LIST_DIR}/embed.cmake)
function(zel_embed room header namespace)
    list(TRANSFORM ARGN PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/ OUTPUT_VARIABLE files)
    set(embedded ${CMAKE_CURRENT_BINARY_DIR}/${room}_texts.cpp)
    string(REPLACE ";" "$<SEMICOLON>" files_argument "${files}")
    add_custom_command(OUTPUT ${embedded}
        COMMAND ${CMAKE_COMMAND} "-DIN=${files_argument}" -DOUT=${embedded} -DHEADER=${header} -DNAMESPACE=${namespace}
            -P ${ZEL_EMBED}
        DEPENDS ${files} ${ZEL_EMBED} VERBATIM)
    target_sources(zel_${room} PRIVATE ${embedded})
endfunction()
