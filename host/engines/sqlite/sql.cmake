# The SQLite side of the SQL front end: what translated statements are written as, and what they
# call.
find_package(SQLite3 REQUIRED)
set(icu "")  # the system's own knowledge of languages takes its place
if(NOT WIN32)
  find_package(ICU REQUIRED COMPONENTS i18n uc)
  set(icu ICU::i18n ICU::uc)
endif()

add_library(quoracc_sqlite_sql
  ${CMAKE_CURRENT_LIST_DIR}/functions/collation.cpp
  ${CMAKE_CURRENT_LIST_DIR}/functions/collator_${quoracc_letters}.cpp
  ${CMAKE_CURRENT_LIST_DIR}/functions/date_functions.cpp
  ${CMAKE_CURRENT_LIST_DIR}/functions/functions.cpp
  ${CMAKE_CURRENT_LIST_DIR}/functions/letters_${quoracc_letters}.cpp
  ${CMAKE_CURRENT_LIST_DIR}/functions/like_pattern.cpp
  ${CMAKE_CURRENT_LIST_DIR}/functions/number_functions.cpp
  ${CMAKE_CURRENT_LIST_DIR}/functions/text_functions.cpp
  ${CMAKE_CURRENT_LIST_DIR}/write/kept_totals_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/write/sql_writer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/write/sqlite_form.cpp)
target_link_libraries(quoracc_sqlite_sql PUBLIC quoracc_written_sql SQLite::SQLite3
                                         PRIVATE ${icu})
set_target_properties(quoracc_sqlite_sql PROPERTIES UNITY_BUILD OFF)
quoracc_target(quoracc_sqlite_sql)
