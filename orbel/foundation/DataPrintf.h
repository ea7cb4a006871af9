#ifndef ORBEL_FOUNDATION_DATAPRINTF_H
#define ORBEL_FOUNDATION_DATAPRINTF_H

#include <orbel/foundation/Export.h>

#include <cstdarg>

/// Diagnostic messages of the library go to print functions that the host installs; with none installed they
/// vanish. Storing null switches an output off again. Install them once at start-up: the slots take no lock.

/// Kept so that hosts can install it; no message is ever sent to it (see DataSetVPrintfFunction).
ORBEL_API void DataSetPrintfFunction(int (*function)(const char* format, ...));

/// Receives what DataWPrintf prints. Contract: it is called with the format and ONE further argument, the va_list of
/// the caller's arguments. Hosts rely on it: install a function that takes a va_list as its second argument.
ORBEL_API void DataSetWPrintfFunction(int (*function)(const wchar_t* format, ...));

/// Receives what DataPrintf and DataVPrintf print.
ORBEL_API void DataSetVPrintfFunction(int (*function)(const char* format, va_list args));

/// Receives what DataVWPrintf prints.
ORBEL_API void DataSetVWPrintfFunction(int (*function)(const wchar_t* format, va_list args));

/// The installed function's result, 0 when none is installed.
ORBEL_API int DataPrintf(const char* format, ...);

/// The installed function's result, 0 when none is installed.
ORBEL_API int DataWPrintf(const wchar_t* format, ...);

/// The installed function's result, 0 when none is installed.
ORBEL_API int DataVPrintf(const char* format, va_list args);

/// Contract: always 0, whatever the installed function returns; hosts rely on it.
ORBEL_API int DataVWPrintf(const wchar_t* format, va_list args);

/// Does nothing; hosts call it with any level.
ORBEL_API void DataDebug(int level);

/// Does nothing; in particular it attaches no buffer to a standard stream.
ORBEL_API void InitIOStreams();

#endif
