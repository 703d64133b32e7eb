#include "picture/CablePicture.h"

#include "picture/StripPicture.h"
#include "platform/Encoding.h"
#include "setup/SetupDocument.h"

namespace kelvora {

namespace {

// All in twips.
constexpr int CablePictureHeight = 3300;
constexpr int KeyboardLeft = 200;
constexpr int KeyboardTop = 150;
constexpr int CableWidth = 60;
constexpr int OutlineWidth = 30;
constexpr int BoxCorner = 60;

constexpr KeyRect Computer{6450, 250, 1300, 850};
constexpr KeyRect PowerSupply{6450, 1900, 1300, 560};
constexpr KeyRect Till{4250, 2420, 1700, 620};

/// Where the new cables end, and where the "Y" parts.
constexpr int PartingX = 4900;
constexpr int PartingY = 1200;

class CableDrawing {
public:
    CableDrawing(const MessageCatalogue& catalogue, std::string_view ink) : catalogue_(catalogue), ink_(ink)
    {
    }

    std::string Svg()
    {
        DrawDevices();
        DrawCables();
        DrawOldCable();
        Word(KeyboardLeft + 1470, 3000, Message::CableKeyboard);
        Word(PartingX - 150, 750, Message::CableY);
        Word(Computer.left + Computer.width / 2, Computer.top + Computer.height / 2, Message::CableComputer);
        Word(PowerSupply.left + PowerSupply.width / 2, PowerSupply.top + PowerSupply.height + 220,
             Message::CablePower);
        Word(Till.left + Till.width / 2, Till.top + Till.height / 2, Message::CableTill);
        return SvgDocument(CablePictureWidth, CablePictureHeight, drawing_.Shapes());
    }

private:
    Paint Line(int width) const { return {"none", ink_, width}; }

    void DrawDevices()
    {
        SetupDocument keyboard;
        InsertModule(keyboard, ModuleKind::KM096, 0);
        DrawStrip(drawing_, keyboard.Modules, KeyboardLeft, KeyboardTop);
        drawing_.Rect(Computer, BoxCorner, Line(OutlineWidth));
        const int middle = Computer.left + Computer.width / 2;
        drawing_.Path(
            "M" + std::to_string(middle) + " 1100 v180 M" + std::to_string(middle - 350) + " 1280 h700",
            Line(OutlineWidth));
        drawing_.Rect(PowerSupply, BoxCorner, Line(OutlineWidth));
        // A flash of lightning.
        drawing_.Path("M7130 1990 l-150 210 h120 l-60 180 l190 -230 h-130 l70 -160 z", {ink_});
    }

    void DrawCables()
    {
        drawing_.Path("M3140 1200 H4300", Line(CableWidth));
        drawing_.Path("M4500 1200 H4900 C5400 1200 5300 700 5900 700 H6450", Line(CableWidth));
        drawing_.Path("M4900 1200 C5400 1200 5300 2180 5900 2180 H6450", Line(CableWidth));
        drawing_.Circle(PartingX, PartingY, CableWidth, {ink_});
        // Plugs: the keyboard's own cable into the "Y", that one's ends into the rest.
        for (const KeyRect& plug : {KeyRect{4180, 1110, 200, 180}, KeyRect{4400, 1090, 160, 220},
                                    KeyRect{6270, 610, 180, 180}, KeyRect{6270, 2090, 180, 180}})
            drawing_.Rect(plug, 20, {ink_});
    }

    // Dashed by hand: not every viewer of the Tiny profile dashes.
    void DrawOldCable()
    {
        for (int x = 3140; x < Till.left; x += 200)
            drawing_.Line(x, 2150 + (x - 3140) / 2, x + 110, 2150 + (x - 3140 + 110) / 2, Line(CableWidth));
        drawing_.Rect(Till, BoxCorner, Line(OutlineWidth));
        drawing_.Path("M3450 2180 l380 380 M3830 2180 l-380 380", Line(CableWidth));
    }

    void Word(int x, int y, const MessageId& message)
    {
        drawing_.Text(x, y, CableWordSize, ink_, Utf8FromText(catalogue_.Caption(message)));
    }

    const MessageCatalogue& catalogue_;
    std::string_view ink_;
    SvgDrawing drawing_;
};

}  // namespace

std::string CablePicture(const MessageCatalogue& catalogue, std::string_view ink)
{
    return CableDrawing(catalogue, ink).Svg();
}

}  // namespace kelvora
