#ifndef KOR_PROPERTIES_H
#define KOR_PROPERTIES_H

#include <string>

class Host;

/// Runs a command of the host and returns its answer, empty when there is none:
///
///     MAIN*ONAIR GET_INFO                        the name and the address of the machine
///     #12*ACTIVE SET 0                           hides container 12; 1 shows it
///     board/title*GEOM*TEXT GET                  a container by its path, or by its name alone
///     #12*FUNCTION*DataText*FieldName SET title  a setting of a plug-in, which takes effect in the next frame
///     #12*FUNCTION*DataText ADD                  adds a plug-in, DELETE removes it
///
/// A number that is none changes nothing. A number and a blank in front, as expressions send them, count for nothing.
std::string answerCommand(Host& host, const std::string& command);

#endif
