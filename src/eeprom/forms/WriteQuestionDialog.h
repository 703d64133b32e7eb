// The question before EEPROM data is written: the modules' bytes now and to be written, each row on a line of
// its own whatever the screen. It is answered with Yes or No, and No is the default.
#pragma once

#include <QDialog>

#include "eeprom/WriteQuestion.h"

namespace kelvora {

class WriteQuestionDialog final : public QDialog {
public:
    WriteQuestionDialog(const QString& title, const WriteQuestion& question, QWidget* parent);
};

}  // namespace kelvora
