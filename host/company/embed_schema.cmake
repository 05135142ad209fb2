# Turns the schema files into one C++ source of string literals.
# cmake -DOUTPUT=file.cpp -DINPUTS="a.sql;b.sql" -P embed_schema.cmake
set(source "#include \"host/company/schema.h\"\n\nnamespace QuorHost {\n\n")
string(APPEND source "const std::vector<std::string_view>& schemaTexts() {\n")
string(APPEND source "  static const std::vector<std::string_view> texts = {\n")
foreach(input IN LISTS INPUTS)
  file(READ "${input}" text)
  string(APPEND source "R\"sql(${text})sql\",\n")
endforeach()
string(APPEND source "  };\n  return texts;\n}\n\n}  // namespace QuorHost\n")
file(WRITE "${OUTPUT}" "${source}")
