#include "picture/SvgDrawing.h"

#include <initializer_list>
#include <string>
#include <string_view>

#include "keymap/KeyGrid.h"

namespace kelvora {

namespace {

constexpr int TwipsPerSvgPixel = 1440 / 96;  // the two in an inch

std::string Attribute(std::string_view name, std::string_view value)
{
    return std::string(" ").append(name).append("=\"").append(value).append("\"");
}

std::string Attribute(std::string_view name, int value)
{
    return Attribute(name, std::to_string(value));
}

struct Number {
    std::string_view name;
    int value;
};

std::string Element(std::string_view name, std::initializer_list<Number> numbers, const Paint& paint)
{
    std::string text = std::string("<").append(name);
    for (const Number& number : numbers)
        text += Attribute(number.name, number.value);
    text += Attribute("fill", paint.fill);
    if (paint.strokeWidth > 0) {
        text += Attribute("stroke", paint.stroke) + Attribute("stroke-width", paint.strokeWidth) +
                Attribute("stroke-linecap", "round") + Attribute("stroke-linejoin", "round");
    }
    return text;
}

std::string GradientStop(int offset, std::string_view colour, int opacity)
{
    return "<stop" + Attribute("offset", offset) + Attribute("stop-color", colour) +
           (opacity < 100 ? Attribute("stop-opacity", "0." + std::to_string(100 + opacity).substr(1)) : "") +
           "/>";
}

constexpr std::string_view AnchorName(Lettering::Anchor anchor)
{
    switch (anchor) {
        case Lettering::Anchor::Start:
            return "start";
        case Lettering::Anchor::End:
            return "end";
        case Lettering::Anchor::Middle:
            break;
    }
    return "middle";
}

// U+FFFE and U+FFFF, which no XML document may hold, begin with these bytes.
constexpr std::string_view NoCharacter = "\xEF\xBF";

std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto code = static_cast<unsigned char>(text[i]);
        if (code == '&') {
            escaped += "&amp;";
        } else if (code == '<') {
            escaped += "&lt;";
        } else if (code == '>') {
            escaped += "&gt;";
        } else if (text.substr(i).starts_with(NoCharacter) && text.size() > i + 2 &&
                   static_cast<unsigned char>(text[i + 2]) >= 0xBE) {
            escaped += '?';
            i += NoCharacter.size();
        } else {
            escaped += code < 0x20 || code == 0x7F ? '?' : text[i];
        }
    }
    return escaped;
}

}  // namespace

void SvgDrawing::Rect(const KeyRect& place, int radius, const Paint& paint)
{
    shapes_ += Element("rect",
                       {{"x", place.left},
                        {"y", place.top},
                        {"width", place.width},
                        {"height", place.height},
                        {"rx", radius},
                        {"ry", radius}},
                       paint) +
               "/>\n";
}

void SvgDrawing::Circle(int x, int y, int radius, const Paint& paint)
{
    shapes_ += Element("circle", {{"cx", x}, {"cy", y}, {"r", radius}}, paint) + "/>\n";
}

void SvgDrawing::Line(int x1, int y1, int x2, int y2, const Paint& paint)
{
    shapes_ += Element("line", {{"x1", x1}, {"y1", y1}, {"x2", x2}, {"y2", y2}}, paint) + "/>\n";
}

void SvgDrawing::Path(std::string_view data, const Paint& paint)
{
    shapes_ += Element("path", {}, paint) + Attribute("d", data) + "/>\n";
}

void SvgDrawing::Text(int x, int y, const Lettering& lettering, std::string_view text)
{
    // Viewers of the Tiny profile know no vertical centring: a capital is about 0.72 of the size high.
    shapes_ +=
        Element("text", {{"x", x}, {"y", y + lettering.size * 36 / 100}, {"font-size", lettering.size}},
                {lettering.colour}) +
        Attribute("font-family", "sans-serif") +
        (lettering.bold ? Attribute("font-weight", "bold") : std::string()) +
        Attribute("text-anchor", AnchorName(lettering.anchor)) + ">";
    shapes_.append(Escaped(text)).append("</text>\n");
}

void SvgDrawing::Group(int dx, int dy, std::string_view shapes)
{
    shapes_ += "<g" +
               Attribute("transform", "translate(" + std::to_string(dx) + " " + std::to_string(dy) + ")") +
               ">\n";
    shapes_.append(shapes).append("</g>\n");
}

void SvgDrawing::VerticalGradient(std::string_view id, std::string_view top, std::string_view bottom)
{
    shapes_ += "<linearGradient" + Attribute("id", id) + Attribute("x1", 0) + Attribute("y1", 0) +
               Attribute("x2", 0) + Attribute("y2", 1) + ">" + GradientStop(0, top, 100) +
               GradientStop(1, bottom, 100) + "</linearGradient>\n";
}

void SvgDrawing::RadialGradient(std::string_view id, std::string_view middle, std::string_view rim,
                                int rimOpacity)
{
    shapes_ += "<radialGradient" + Attribute("id", id) + Attribute("cx", "0.5") + Attribute("cy", "0.5") +
               Attribute("r", "0.5") + ">" + GradientStop(0, middle, 100) + GradientStop(1, rim, rimOpacity) +
               "</radialGradient>\n";
}

namespace {

std::string Document(std::string_view width, std::string_view height, const std::string& viewBox,
                     std::string_view shapes)
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\"" + Attribute("width", width) +
           Attribute("height", height) + Attribute("viewBox", "0 0 " + viewBox) + ">\n" +
           std::string(shapes) + "</svg>\n";
}

std::string Extent(int width, int height)
{
    return std::to_string(width) + " " + std::to_string(height);
}

}  // namespace

std::string SvgDocument(int width, int height, std::string_view shapes)
{
    return Document(std::to_string(width / TwipsPerSvgPixel), std::to_string(height / TwipsPerSvgPixel),
                    Extent(width, height), shapes);
}

std::string SvgSheet(std::string_view shapes)
{
    SvgDrawing paper;
    paper.Rect({0, 0, SheetWidth, SheetHeight}, 0, {"#ffffff"});
    return Document("210mm", "297mm", Extent(SheetWidth, SheetHeight), paper.Shapes() + std::string(shapes));
}

}  // namespace kelvora
