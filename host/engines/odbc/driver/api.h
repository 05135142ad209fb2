// The interface of ODBC, by whichever driver manager the system has. Texts cross it as UTF-16.
#pragma once

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

// Functions without a W in their name mean those of narrow texts.
#define SQL_NOUNICODEMAP
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

static_assert(sizeof(SQLWCHAR) == 2);
