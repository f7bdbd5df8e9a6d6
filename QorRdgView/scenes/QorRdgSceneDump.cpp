#include "scenes/QorRdgSceneDump.h"

namespace {

std::string Number(float iValue) {
    return QorUnicodeString().BuildFromNum(static_cast<double>(iValue), "%f").Str();
}

std::string Numbers(const std::array<float, 3>& iValues) {
    return Number(iValues[0]) + "," + Number(iValues[1]) + "," + Number(iValues[2]);
}

std::string Line(const char* iKey, const std::string& iValue) {
    return std::string("Scene.") + iKey + "=\"" + iValue + "\";\n";
}

} // namespace

std::string QorPrintScene(const QorRdgScene& iScene) {
    std::string text = "==========================\n";
    text += Line("Light.Ambient", Number(iScene.ambient));
    text += Line("Light.Diffuse", Number(iScene.diffuse));
    text += Line("Light.Specular", Number(iScene.specular));
    text += Line("Light.Shadow", std::to_string(iScene.shadow));
    if (iScene.lightCount != 0) {
        text += Line("Light.Color1", Numbers(iScene.color1));
        text += Line("Light.Direction1", Numbers(iScene.direction1));
    }
    if (iScene.lightCount == 2) {
        text += Line("Light.Color2", Numbers(iScene.color2));
        text += Line("Light.Direction2", Numbers(iScene.direction2));
    }
    text += Line("Background.Image", iScene.backgroundImage.Str());
    text += Line("Background.Stretch", std::to_string(iScene.backgroundStretch));
    text += Line("Ground", std::to_string(iScene.groundOn));
    text += Line("Ground.Transparency", Number(iScene.groundTransparency));
    text += Line("Ground.Reflectivity", Number(iScene.groundReflectivity));
    return text + "\n";
}
