#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

/// Lets a table of strings be searched by views.
struct QorTextHash {
    using is_transparent = void;

    std::size_t operator()(std::string_view iText) const noexcept {
        return std::hash<std::string_view>()(iText);
    }
};

using QorCatalogEntries =
    std::unordered_map<std::string, std::string, QorTextHash, std::equal_to<>>;

/// Reads the text of a catalog file into \p ioEntries; keys that are there already stay as they
/// are.
///
/// The form: one entry a line, `Key="value";`, in UTF-8, with or without a byte order mark, lines
/// ended by LF or CRLF. Blanks around the key, the equals sign and the semicolon do not matter.
/// Within the quotes \" is a quote, \\ a backslash, \n a line end, \t a tab; before anything else a
/// backslash stands for itself. Empty lines are skipped, and comments: a line that begins with "//"
/// or "#", and what follows "//" after an entry. A key given twice keeps the later value.
///
/// Every line that is damaged is left out with a warning "NAME, line N: what is wrong"; after ten
/// of them one more says how many others there are.
void QorReadCatalogText(std::string_view iText,
                        const std::string& iName,
                        QorCatalogEntries& ioEntries);

/// One line of a catalog, without a line end, with the escapes that \p iValue needs.
[[nodiscard]] std::string QorWriteCatalogLine(std::string_view iKey, std::string_view iValue);
