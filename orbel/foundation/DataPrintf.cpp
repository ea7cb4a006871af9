#include <orbel/foundation/DataPrintf.h>

namespace {

struct PrintFunctions {
    int (*narrow)(const char*, ...) = nullptr;
    int (*wide)(const wchar_t*, ...) = nullptr;
    int (*narrowList)(const char*, va_list) = nullptr;
    int (*wideList)(const wchar_t*, va_list) = nullptr;
};

PrintFunctions printFunctions;

} // namespace

void DataSetPrintfFunction(int (*function)(const char* format, ...)) {
    printFunctions.narrow = function;
}

void DataSetWPrintfFunction(int (*function)(const wchar_t* format, ...)) {
    printFunctions.wide = function;
}

void DataSetVPrintfFunction(int (*function)(const char* format, va_list args)) {
    printFunctions.narrowList = function;
}

void DataSetVWPrintfFunction(int (*function)(const wchar_t* format, va_list args)) {
    printFunctions.wideList = function;
}

int DataPrintf(const char* format, ...) {
    va_list args;
    va_start(args, format);
    const int result = DataVPrintf(format, args);
    va_end(args);
    return result;
}

int DataWPrintf(const wchar_t* format, ...) {
    if (!printFunctions.wide)
        return 0;
    va_list args;
    va_start(args, format);
    const int result = printFunctions.wide(format, args);
    va_end(args);
    return result;
}

int DataVPrintf(const char* format, va_list args) {
    return printFunctions.narrowList ? printFunctions.narrowList(format, args) : 0;
}

int DataVWPrintf(const wchar_t* format, va_list args) {
    if (printFunctions.wideList)
        printFunctions.wideList(format, args);
    return 0;
}

void DataDebug(int /*level*/) {}

void InitIOStreams() {}
