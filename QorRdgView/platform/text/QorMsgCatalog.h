#pragma once

#include "platform/text/QorString.h"

#include <vector>

/// Texts that are substituted into a message.
using QorMsgParameters = std::vector<QorUnicodeString>;

/// Localised texts, by catalog and key. For the files and their order see QorCatalogs. A key that
/// the translation lacks comes from the plain catalog, one that an earlier directory lacks from a
/// later one, one that all of them lack from the program's own directory; but where the path list
/// holds a resource catalog of the same name, its texts belong to it and the program's own do not
/// step in. User-interface thread only.
class QorMsgCatalog {
public:
    /// The text with its parameters in place: "/P1" stands for the first, "/P2" for the second, up
    /// to "/P9"; "//P1" gives "/P1" itself; a parameter that was not given gives nothing. A text
    /// that is substituted is not looked at again. For a missing key the result is the key itself,
    /// so that it is seen, and the parameters, which may be all that matters: "Key: first, second".
    [[nodiscard]] static QorUnicodeString BuildMessage(const QorString& iCatalog,
                                                       const QorString& iKey,
                                                       const QorMsgParameters& iParameters = {});

    /// The same with a default for a missing key, in which parameters are substituted too.
    [[nodiscard]] static QorUnicodeString BuildMessage(const QorString& iCatalog,
                                                       const QorString& iKey,
                                                       const QorMsgParameters& iParameters,
                                                       const QorUnicodeString& iDefault);

    /// The text as it stands in the catalog, or null when the key is missing; valid until the next
    /// look-up or Refresh. The quick way for many texts, most of which may be missing.
    [[nodiscard]] static const std::string* FindMessage(std::string_view iCatalog,
                                                        std::string_view iKey);
};
