# What the SQL of all storage engines has in common: the walk over queries and expressions.
add_library(quoracc_written_sql
  ${CMAKE_CURRENT_LIST_DIR}/call_names.cpp
  ${CMAKE_CURRENT_LIST_DIR}/condition_writer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/expression_form.cpp
  ${CMAKE_CURRENT_LIST_DIR}/expression_writer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/filter.cpp
  ${CMAKE_CURRENT_LIST_DIR}/group_keys.cpp
  ${CMAKE_CURRENT_LIST_DIR}/query_writer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/raising.cpp
  ${CMAKE_CURRENT_LIST_DIR}/sql_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/statement_writer.cpp)
target_link_libraries(quoracc_written_sql PUBLIC quoracc_sql)
set_target_properties(quoracc_written_sql PROPERTIES UNITY_BUILD OFF)
quoracc_target(quoracc_written_sql)
