# Writes OUT, a source that holds each of the files IN as the text of its name: cmake -DIN="a.sql;b.sql" -DOUT=x.cpp -P
set(source "#include \"schema/schema_texts.h\"\n\nnamespace zel::schema {\n")
foreach(file IN LISTS IN)
    get_filename_component(name ${file} NAME_WE)
    file(READ ${file} text)
    string(APPEND source "\nconst std::string_view ${name} = R\"sql(${text})sql\";\n")
endforeach()
string(APPEND source "\n} // namespace zel::schema\n")
file(WRITE ${OUT} "${source}")
