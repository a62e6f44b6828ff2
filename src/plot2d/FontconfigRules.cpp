// Data: none. Method: later rules win, so rules of the program follow those that are in force.
#include "plot2d/FontRules.h"

#include <fontconfig/fontconfig.h>

namespace terravo {
namespace {

std::string RulesFor(const std::string& family) {
    const std::string name = "<string>" + family + "</string>";
    const std::string test = "<test name='family'>" + name + "</test>";
    return "<fontconfig><match target='pattern'>" + test +
           "<edit name='family' mode='assign' binding='strong'>" + name + "</edit></match>" +
           "<match target='font'>" + test +
           "<edit name='autohint' mode='assign'><bool>false</bool></edit></match></fontconfig>";
}

} // namespace

void KeepFromFontRules(const std::string& family) {
    const std::string rules = RulesFor(family);
    FcConfigParseAndLoadFromMemory(FcConfigGetCurrent(),
                                   reinterpret_cast<const FcChar8*>(rules.c_str()), FcFalse);
}

} // namespace terravo
