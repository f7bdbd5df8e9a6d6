#pragma once

#include "platform/component/QorExtension.h"
#include "platform/vis/QorPixelImage.h"

/// Where a render engine shows its output. User-interface thread only; every operation answers a
/// result code.
class QorIRdgDisplay : public QorInterface {
    QorDeclareInterface(QorIRdgDisplay)

    /// Shows a picture, whole or as far as it has come.
    virtual QorResult Draw(QorPixelImage* iImage) = 0;
    /// Removes what Draw showed.
    virtual QorResult Clear() = 0;
    /// Called with true it asks for an abort; called with false it answers whether one has been
    /// asked for.
    virtual QorResult CheckAbort(unsigned char& ioAbort) = 0;
    /// Progress of the running render: 0 to 99 while it runs; anything else ends it.
    virtual QorResult SetProgress(int& iPercent) = 0;
    /// A text for the person. A display that shows none answers E_FAIL, which callers ignore.
    virtual QorResult SetMessage(QorUnicodeString& iText) = 0;
};

QorDeclareHandle(QorIRdgDisplay);

/// Ties the interface to a class that has operations of the same names.
template <class Implementation>
class TIEQorIRdgDisplay : public QorImplements<QorTie<Implementation>, QorIRdgDisplay> {
public:
    using QorImplements<QorTie<Implementation>, QorIRdgDisplay>::QorImplements;

    QorResult Draw(QorPixelImage* iImage) override { return this->GetTied()->Draw(iImage); }

    QorResult Clear() override { return this->GetTied()->Clear(); }

    QorResult CheckAbort(unsigned char& ioAbort) override {
        return this->GetTied()->CheckAbort(ioAbort);
    }

    QorResult SetProgress(int& iPercent) override { return this->GetTied()->SetProgress(iPercent); }

    QorResult SetMessage(QorUnicodeString& iText) override {
        return this->GetTied()->SetMessage(iText);
    }
};
