#ifndef KOR_SCENEFILE_H
#define KOR_SCENEFILE_H

#include "Scene.h"

#include <iosfwd>
#include <stdexcept>
#include <string>

/// What is wrong with a scene file, in one line: the file, the place in it as a JSON pointer (RFC 6901) and the reason.
class SceneFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Larger scenes are mistakes; "repeat" inside "repeat" makes them quickly.
inline constexpr int mostContainers = 1'000'000;

/// Reads a scene from JSON into an empty scene; docs/host.md shows the format. Throws SceneFileError.
void readSceneFile(const std::string& path, Scene& scene);

/// The same from a text; `name` stands for the file in messages. More than `most` containers are an error.
void readScene(const std::string& text, const std::string& name, Scene& scene, int most = mostContainers);

#endif
