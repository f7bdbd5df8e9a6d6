#pragma once

#include <QHash>
#include <QTranslator>

#include <string>
#include <vector>

namespace qor::desktop {

/// The texts that Qt's own controls bring along (standard buttons, the file and colour dialogs,
/// menus of editors, names of keys), in the language of the program: from the message catalog
/// "QorStandardTexts". They are read once, for Qt asks for some of them from threads of its own.
class StandardTexts : public QTranslator {
public:
    StandardTexts();

    [[nodiscard]] QString translate(const char* context,
                                    const char* sourceText,
                                    const char* disambiguation,
                                    int n) const override;

    [[nodiscard]] bool isEmpty() const override { return texts_.isEmpty(); }

    /// The keys of all texts, "Editor.Copy"; for whoever wants to know whether a catalog has them.
    [[nodiscard]] static std::vector<std::string> keys();

private:
    QHash<QByteArray, QString> texts_; ///< by context and source text
};

} // namespace qor::desktop
