include(HeaderLibrary)
quoracc_header_library(CLI11::CLI11 CLI)
set(CLI11_FOUND TRUE)
