#include "keymap/KeyGrid.h"

#include "keymap/Models.h"

namespace kelvora {

KeyRect SizeKey(KeyRect single, char type, int gap)
{
    if (KeyType::IsWide(type))
        single.width += gap + single.width;
    if (KeyType::IsTall(type))
        single.height += gap + single.height;
    return single;
}

}  // namespace kelvora
