#ifndef KOR_SVGFRAME_H
#define KOR_SVGFRAME_H

#include "Picture.h"
#include "Shapes.h"

#include <map>
#include <string>

/// Keeps a file up to date with what the frames show, as one SVG that needs no other file. Pictures are those of the
/// folder "pictures" in the current one; in place of one that is missing or is no SVG stands its name in a box.
class SvgFrame {
public:
    explicit SvgFrame(std::string path);

    /// Writes the file, unless the frame shows what the last one did. The file is replaced as a whole, so a viewer
    /// never reads half a frame. False when that fails, as it may for a moment while a viewer has the file open: the
    /// next frame tries again.
    bool write(const Frame& frame);

    /// The frame as SVG. A picture is read once, when a frame shows it first; a missing one is looked for each time.
    std::string draw(const Frame& frame);

private:
    const Picture* find(const std::string& name);
    bool replace(const std::string& drawing) const;

    std::string m_path;
    std::map<std::string, Picture> m_pictures;
    std::string m_written;
};

#endif
