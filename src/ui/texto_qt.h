// Between the program's UTF-8 and the toolkit's text.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tarvoline::ui {

inline QString aQt(std::string_view texto) {
    return QString::fromUtf8(texto.data(), static_cast<qsizetype>(texto.size()));
}

inline std::string deQt(const QString& texto) {
    return texto.normalized(QString::NormalizationForm_C).toStdString();
}

}  // namespace tarvoline::ui
