# Writes OUT, a source that holds each of the files IN as the text of its name, as HEADER declares them in NAMESPACE:
# cmake -DIN="a.sql;b.txt" -DOUT=x.cpp -DHEADER=x.h -DNAMESPACE=x -P
set(source "#include \"${HEADER}\"\n\nnamespace ${NAMESPACE} {\n")
foreach(file IN LISTS IN)
    get_filename_component(name ${file} NAME_WE)
    file(READ ${file} text)
    string(APPEND source "\nconst std::string_view ${name} = R\"embedded(${text})embedded\";\n")
endforeach()
string(APPEND source "\n} // namespace ${NAMESPACE}\n")
file(WRITE ${OUT} "${source}")
