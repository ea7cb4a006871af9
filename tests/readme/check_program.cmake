file(READ "${README}" readme)
file(READ "${PROGRAM}" program)

string(FIND "${readme}" "```cpp\n${program}```" position)
if(position EQUAL -1)
    message(FATAL_ERROR "${README} does not show ${PROGRAM} word for word")
endif()
