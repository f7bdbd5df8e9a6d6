#include "quickrender/QorRdgViewerAdapters.h"

#include "quickrender/QorRdgAreaViewer.h"
#include "quickrender/QorRdgBackgroundViewer.h"
#include "quickrender/QorRdgDisplayViewer.h"
#include "quickrender/QorRdgGroundViewer.h"

namespace {

struct Adapter {
    const QorInterfaceId& interface;
    QorExtension::Factory factory;
};

} // namespace

void QorRegisterViewerAdapters() {
    for (const Adapter& adapter :
         {Adapter{QorIRdgDisplay::ClassId(), &CreateBOAQorIRdgDisplayQorRdgDisplayViewer},
          Adapter{QorIRdgArea::ClassId(), &CreateBOAQorIRdgAreaQorRdgAreaViewer},
          Adapter{QorIRdgBackground::ClassId(), &CreateBOAQorIRdgBackgroundQorRdgBackgroundViewer},
          Adapter{QorIRdgGround::ClassId(), &CreateBOAQorIRdgGroundQorRdgGroundViewer}})
        QorExtension::Register("Qor3DViewer", adapter.interface, adapter.factory);
}
