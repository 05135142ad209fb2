# Turns text files into one C++ source of string literals: a function that gives their texts in
# order, as the header declares it.
# cmake -DOUTPUT=file.cpp -DINPUTS="a.sql;b.sql" -DHEADER=a.h -DNAMESPACE=A::B -DFUNCTION=texts
#       -P embed_texts.cmake
set(source "#include \"${HEADER}\"\n\nnamespace ${NAMESPACE} {\n\n")
string(APPEND source "const std::vector<std::string_view>& ${FUNCTION}() {\n")
string(APPEND source "  static const std::vector<std::string_view> texts = {\n")
foreach(input IN LISTS INPUTS)
  file(READ "${input}" text)
  string(APPEND source "R\"sql(${text})sql\",\n")
endforeach()
string(APPEND source "  };\n  return texts;\n}\n\n}  // namespace ${NAMESPACE}\n")
file(WRITE "${OUTPUT}" "${source}")
