# The storage engine, built in: Windows brings none. scripts/fetch-sqlite puts its source here.
set(QUORACC_SQLITE ${PROJECT_SOURCE_DIR}/build/sqlite CACHE PATH "Folder with sqlite3.c and sqlite3.h")
if(NOT EXISTS ${QUORACC_SQLITE}/sqlite3.c)
  message(FATAL_ERROR "${QUORACC_SQLITE}/sqlite3.c is not there: run scripts/fetch-sqlite")
endif()
if(NOT TARGET SQLite::SQLite3)
  enable_language(C)
  add_library(quoracc_sqlite3 STATIC ${QUORACC_SQLITE}/sqlite3.c)
  target_include_directories(quoracc_sqlite3 SYSTEM INTERFACE ${QUORACC_SQLITE})
  target_compile_options(quoracc_sqlite3 PRIVATE -O2 -w)
  # What Debian's own library is built with, as far as statements can tell the difference.
  target_compile_definitions(quoracc_sqlite3 PRIVATE
    SQLITE_THREADSAFE=1 SQLITE_ENABLE_COLUMN_METADATA SQLITE_ENABLE_DBSTAT_VTAB
    SQLITE_LIKE_DOESNT_MATCH_BLOBS SQLITE_OMIT_LOAD_EXTENSION SQLITE_ENABLE_MATH_FUNCTIONS)
  add_library(SQLite::SQLite3 ALIAS quoracc_sqlite3)
endif()
set(SQLite3_FOUND TRUE)
