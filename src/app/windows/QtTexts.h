// Qt's own texts: its file dialog, standard buttons, names of keys.
//
// Data: the translations that are installed beside Qt. Method: the one of the program's language is
// loaded; where there is none Qt speaks English.
#pragma once

#include <QTranslator>

#include <memory>
#include <string>

/// The translation for a prefix of a language file; null for English, in which Qt is written, and
/// where none is installed. It counts once the application has it, and as long as it lives.
std::unique_ptr<QTranslator> QtTextsIn(const std::string& prefix);
