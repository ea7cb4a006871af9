#include "SvgFrame.h"

#include "SvgDrawing.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

namespace {

std::string readAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    // A folder can be opened, but not read.
    text << file.rdbuf();
    return text.str();
}

SvgDrawing::Anchor anchorOf(TextShape::Align align) {
    if (align == TextShape::Align::Left)
        return SvgDrawing::Anchor::Start;
    return align == TextShape::Align::Middle ? SvgDrawing::Anchor::Middle : SvgDrawing::Anchor::End;
}

/// Draws the shapes, with the pictures there are.
class Painter {
public:
    Painter(SvgDrawing& drawing, const std::map<std::string, const Picture*>& pictures)
        : m_drawing(drawing), m_pictures(pictures) {}

    void operator()(const RectangleShape& shape) const { m_drawing.rectangle(shape.box, shape.colour, shape.radius); }

    void operator()(const TextShape& shape) const {
        m_drawing.text(shape.x, shape.baseline(), shape.text,
                       {shape.size, shape.colour, anchorOf(shape.align), shape.isBold});
    }

    void operator()(const PictureShape& shape) const {
        if (m_pictures.count(shape.name) != 0) {
            m_drawing.picture(shape.name, shape.box);
            return;
        }
        constexpr double letters = 12;
        const Box& box = shape.box;
        m_drawing.outline(box, shape.colour);
        m_drawing.text(box.x + box.width / 2, box.y + box.height / 2 + 0.3 * letters, shape.name,
                       {letters, shape.colour, SvgDrawing::Anchor::Middle});
    }

private:
    SvgDrawing& m_drawing;
    const std::map<std::string, const Picture*>& m_pictures;
};

} // namespace

SvgFrame::SvgFrame(std::string path) : m_path(std::move(path)) {}

bool SvgFrame::write(const Frame& frame) {
    std::string drawing = draw(frame);
    if (drawing == m_written)
        return true;
    if (!replace(drawing))
        return false;
    m_written = std::move(drawing);
    return true;
}

std::string SvgFrame::draw(const Frame& frame) {
    std::ostringstream os;
    {
        SvgDrawing drawing(os, frame.width, frame.height, frame.title);
        std::map<std::string, const Picture*> pictures;
        for (const Shape& shape : frame.shapes)
            if (const auto* const shown = std::get_if<PictureShape>(&shape))
                if (const Picture* const picture = find(shown->name))
                    pictures[shown->name] = picture;
        for (const auto& [name, picture] : pictures)
            drawing.definePicture(name, picture->viewBox, picture->content);
        drawing.rectangle({0, 0, frame.width, frame.height}, frame.background);
        for (const Shape& shape : frame.shapes)
            std::visit(Painter(drawing, pictures), shape);
    }
    return os.str();
}

const Picture* SvgFrame::find(const std::string& name) {
    if (const auto found = m_pictures.find(name); found != m_pictures.end())
        return &found->second;
    if (!isPictureName(name))
        return nullptr;
    auto picture = parsePicture(readAll("pictures/" + name));
    return picture ? &m_pictures.emplace(name, std::move(*picture)).first->second : nullptr;
}

bool SvgFrame::replace(const std::string& drawing) const {
    const std::string beside = m_path + ".part";
    std::error_code error;
    {
        std::ofstream file(beside, std::ios::binary);
        file << drawing;
        if (!file.flush()) {
            file.close();
            std::filesystem::remove(beside, error);
            return false;
        }
    }
    std::filesystem::rename(beside, m_path, error);
    if (!error)
        return true;
    std::filesystem::remove(beside, error);
    return false;
}
