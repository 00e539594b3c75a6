# Builds files into the program: qmr_embed_files(<target> <function> <header> <files>...) adds
# to <target> a source defining `const QList<EmbeddedFile>& <function>()` (declared in
# <header>) that holds each file's name and bytes.
function(qmr_embed_files target function header)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ARGN})
    set(source "#include \"${header}\"\n\nnamespace qmr {\n\n")
    string(APPEND source "const QList<EmbeddedFile>& ${function}() {\n")
    string(APPEND source "    static const QList<EmbeddedFile> files = {\n")
    foreach(file ${ARGN})
        get_filename_component(name ${file} NAME)
        file(READ ${file} hex HEX)
        string(LENGTH "${hex}" hex_length)
        math(EXPR length "${hex_length} / 2")
        string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" escaped "${hex}")
        string(APPEND source
            "        {QStringLiteral(\"${name}\"), QByteArray(\"${escaped}\", ${length})},\n")
    endforeach()
    string(APPEND source "    };\n    return files;\n}\n\n} // namespace qmr\n")
    set(output ${CMAKE_CURRENT_BINARY_DIR}/${function}Data.cpp)
    file(WRITE ${output}.new "${source}")
    file(COPY_FILE ${output}.new ${output} ONLY_IF_DIFFERENT)
    target_sources(${target} PRIVATE ${output})
endfunction()
