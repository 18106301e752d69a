#include "kiv/Format/Ifc/Def/IfcDefErrors.h"

#include "Base/Metered.h"

#include <array>
#include <exception>
#include <fstream>
#include <string_view>
#include <utility>

namespace kiv::ifc::def::xml {

namespace {

std::string_view kindField(ErrorKind kind) {
    switch (kind) {
    case ErrorKind::Error:
        return "Error;";
    case ErrorKind::FatalError:
        return "FatalError;";
    }
    return {};
}

} // namespace

void XmlSetErrors::vErrorAdd(ErrorKind kind, std::string item, std::string message, std::size_t line) {
    if (meter_) {
        meter_->vTake(WorkMeter::Unit::Reports, 1);
        vMemoryTake(meter_, memoryOf(item) + memoryOf(message));
        vRoomForOne(records_, meter_);
    }
    records_.push_back({kind, std::move(item), std::move(message), line});
}

XmlSetErrors::Reading::Reading(XmlSetErrors& errors, BudgetMeter& meter) :
    errors_(errors),
    meterBefore_(std::exchange(errors.meter_, &meter)),
    recordsBefore_(errors.records_.size()),
    exceptionsBefore_(std::uncaught_exceptions()),
    memory_(meter) {}

XmlSetErrors::Reading::~Reading() {
    errors_.meter_ = meterBefore_;
    if (std::uncaught_exceptions() > exceptionsBefore_)
        errors_.records_.resize(recordsBefore_);
}

void XmlSetErrors::vSetNameSet(std::string setName) {
    setName_ = std::move(setName);
}

std::string XmlSetsErrors::getFormattedErrors() const {
    std::string text;
    for (const XmlSetErrors& set : sets) {
        for (const ErrorRecord& record : set.getRecords()) {
            text.append(set.getSetName()).append(1, ';').append(kindField(record.kind));
            text.append(record.item).append(1, ';').append(record.message).append(1, '\n');
        }
    }
    return text;
}

void XmlSetsErrors::vDump(const char* path) const {
    // Opening the file empties it, so everything that needs memory comes first.
    const auto text = getFormattedErrors();
    std::array<char, 4096> buffer;
    std::ofstream file;
    file.rdbuf()->pubsetbuf(buffer.data(), buffer.size());
    file.open(path);
    if (file)
        file << text;
}

} // namespace kiv::ifc::def::xml
