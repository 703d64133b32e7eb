// PNG and PDF for the command line: it does not load what it seldom needs, so that another program beside it
// makes them. Where the windows are not built there is none.
#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "picture/PictureType.h"

namespace kelvora {

/// No picture came; `what()` says why, in English.
class PictureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The path of the program that makes pictures, beside the running one.
std::string PictureProgram();

/// Has `program` made pictures of that type, PNG or PDF: of each item's SVG pages one, of a PNG of the
/// first page. A picture that could not be made is empty. Throws PictureError.
std::vector<std::string> MakePictures(const std::string& program, PictureType type,
                                      std::span<const std::vector<std::string>> items);

}  // namespace kelvora
