#include "script/ostrel_script.h"

#include "script/library/library.h"

namespace {

std::uint32_t randomSeed() {
    std::random_device device;
    return device();
}

} // namespace

OstrelScript::OstrelScript()
    : stringName_(names_.intern("string")), errorName_(names_.intern("error")), randomGenerator_(randomSeed()),
      startTime_(std::chrono::steady_clock::now()) {
    registerCoreLibrary(*this);
    registerStringLibrary(*this);
    registerTableLibrary(*this);
    registerMathLibrary(*this);
    registerUtf8Library(*this);
    registerFileLibrary(*this);
}

OstrelScript::~OstrelScript() = default;
