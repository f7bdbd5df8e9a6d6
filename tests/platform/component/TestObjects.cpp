#include "TestObjects.h"

QorImplementClass(TestSolid, QorBaseUnknown)

QorImplementClass(TestPyramid, TestSolid)

QorImplementClass(TestNamed, QorBaseUnknown)

QorImplementClass(TestPaint, QorExtension)

QorImplementClass(TestActor, QorBaseUnknown)

QorDefineBOA(QorITestColor, TestPaint)

    std::vector<std::string>& Journal() {
    static std::vector<std::string> journal;
    return journal;
}

TestSolid::~TestSolid() {
    Journal().emplace_back("~solid");
}

TestPaint::~TestPaint() {
    // The owner is whole while its extensions go, and gives them no new references to it.
    Journal().push_back(QorQuery<QorITestWeight>(GetOwner()) ? "~paint, reachable" : "~paint");
}

TestActor::~TestActor() {
    Journal().push_back("~" + name);
}

QorVar<TestActor> MakeActor(const char* iName) {
    auto actor = QorMake<TestActor>();
    actor->name = iName;
    return actor;
}
