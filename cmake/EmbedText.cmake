# tolvan_embed_text(<target> <symbol> <file>): makes the bytes of a file, text or not, available to <target> as
#   namespace tolvan::data { extern const std::string_view <symbol>; }
# so that the command needs no data folder beside it. The generated source is made anew when the file changes.
set(TOLVAN_EMBED_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/WriteEmbeddedText.cmake)

function(tolvan_embed_text target symbol file)
  set(output ${CMAKE_CURRENT_BINARY_DIR}/embedded_${symbol}.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DINPUT=${file} -DOUTPUT=${output} -DSYMBOL=${symbol} -P ${TOLVAN_EMBED_SCRIPT}
    DEPENDS ${file} ${TOLVAN_EMBED_SCRIPT}
    VERBATIM)
  set_source_files_properties(${output} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  target_sources(${target} PRIVATE ${output})
endfunction()
