// What the module strip says of its buttons: the caption and the options below each, and its tool tip.
#pragma once

#include <QString>

#include "catalogue/MessageCatalogue.h"
#include "picture/ModuleStrip.h"

namespace kelvora {

// Modules that are expected tell what is known of them; see layout/LineScan.h.

/// The module that a button shows; null when `modules` has none of its kind.
const ModuleRecord* StripRecord(StripButton button, const ModuleList& modules);

/// "Slave Keyboard".
QString StripCaption(const MessageCatalogue& catalogue, StripButton button);

/// The same with its place in the chain, for who does not see it: "Slave Keyboard, device 2 of 4".
QString StripName(const MessageCatalogue& catalogue, StripButton button, const ModuleList& modules);

/// What the line below the caption says: "Keys from 97"; empty where there is nothing to tell.
QString StripSummary(const MessageCatalogue& catalogue, StripButton button, const ModuleList& modules);

/// The summary and the options that have no room in it, a line each.
QString StripDetails(const MessageCatalogue& catalogue, StripButton button, const ModuleList& modules);

/// The tool tip: caption, name, details, and what a click does.
QString StripTip(const MessageCatalogue& catalogue, StripButton button, const ModuleList& modules);

}  // namespace kelvora
