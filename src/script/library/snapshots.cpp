// The script functions that store the state of the world and bring it back.

#include "script/library/functions.h"

Variable exportStateFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count > 1) fail("exportState([path]) expects zero or one argument");
    if (count == 0) {
        const std::vector<unsigned char> image = engine.exportState();
        return std::vector<char>(image.begin(), image.end());
    }
    if (!arguments[0].isString()) fail("exportState(path) expects a path string");
    engine.saveState(engine.resolvePath(arguments[0].asString()));
    return true;
}

Variable importStateFunction(OstrelScript& engine, const Variable* arguments, std::size_t count) {
    if (count != 1) fail("importState(rawOrPath) expects exactly one argument");
    // A copy: what is imported may replace the variable that holds the image.
    const Variable image = arguments[0];
    if (image.isString()) {
        engine.loadState(engine.resolvePath(image.asString()));
    } else if (image.type == VarType::Raw) {
        const std::vector<char>& bytes = image.asRaw();
        engine.importState({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()}, "<raw-state>");
    } else {
        fail("importState(rawOrPath) expects raw bytes or a path string");
    }
    return true;
}
