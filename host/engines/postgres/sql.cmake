# PostgreSQL over the client library of its own, where that is installed.
find_path(LIBPQ_INCLUDE_DIR libpq-fe.h PATH_SUFFIXES postgresql)
find_library(LIBPQ_LIBRARY pq)
mark_as_advanced(LIBPQ_INCLUDE_DIR LIBPQ_LIBRARY)
if(NOT LIBPQ_INCLUDE_DIR OR NOT LIBPQ_LIBRARY OR WIN32)
  return()
endif()

file(GLOB function_files CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/functions/*.sql)
# Those of texts come first: the others call them.
list(FILTER function_files EXCLUDE REGEX texts)
list(PREPEND function_files ${CMAKE_CURRENT_LIST_DIR}/functions/texts.sql)
set(function_text ${CMAKE_CURRENT_BINARY_DIR}/postgres_functions.cpp)
set(embed ${PROJECT_SOURCE_DIR}/cmake/embed_texts.cmake)
add_custom_command(
  OUTPUT ${function_text}
  COMMAND ${CMAKE_COMMAND} -DOUTPUT=${function_text} "-DINPUTS=${function_files}"
          -DHEADER=host/engines/postgres/schema/functions.h -DNAMESPACE=QuorHost::Postgres
          -DFUNCTION=functionTexts -P ${embed}
  DEPENDS ${function_files} ${embed}
  VERBATIM)

add_library(quoracc_postgres
  ${function_text}
  ${CMAKE_CURRENT_LIST_DIR}/connection.cpp
  ${CMAKE_CURRENT_LIST_DIR}/opening.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/change_watch.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/cursor.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/row_buffer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/row_changer.cpp
  ${CMAKE_CURRENT_LIST_DIR}/run/values.cpp
  ${CMAKE_CURRENT_LIST_DIR}/schema/growth.cpp
  ${CMAKE_CURRENT_LIST_DIR}/schema/readers.cpp
  ${CMAKE_CURRENT_LIST_DIR}/schema/stored_catalogue.cpp
  ${CMAKE_CURRENT_LIST_DIR}/server/address.cpp
  ${CMAKE_CURRENT_LIST_DIR}/server/database.cpp
  ${CMAKE_CURRENT_LIST_DIR}/server/link.cpp
  ${CMAKE_CURRENT_LIST_DIR}/server/server_error.cpp
  ${CMAKE_CURRENT_LIST_DIR}/store.cpp
  ${CMAKE_CURRENT_LIST_DIR}/transaction.cpp
  ${CMAKE_CURRENT_LIST_DIR}/write/calls.cpp
  ${CMAKE_CURRENT_LIST_DIR}/write/kept_totals_text.cpp
  ${CMAKE_CURRENT_LIST_DIR}/write/postgres_form.cpp
  ${CMAKE_CURRENT_LIST_DIR}/write/sql_writer.cpp)
target_include_directories(quoracc_postgres PUBLIC ${PROJECT_SOURCE_DIR})
target_include_directories(quoracc_postgres SYSTEM PUBLIC $<BUILD_INTERFACE:${LIBPQ_INCLUDE_DIR}>)
target_link_libraries(quoracc_postgres PUBLIC quoracc_rows quoracc_written_sql
                                       PRIVATE ${LIBPQ_LIBRARY})
set_target_properties(quoracc_postgres PROPERTIES UNITY_BUILD OFF)
quoracc_target(quoracc_postgres)
