#include "Format/Ifc/Def/SchemaLoader.h"

#include "Host/KivException.h"

#include <system_error>
#include <utility>

namespace kiv::ifc {

/// Holds the mutex; a thread that holds it already gets the error that the best of mutexes give.
class SchemaLoader::Lock {
public:
    explicit Lock(SchemaLoader& loader) : loader_(loader) {
        if (loader_.holder_ == std::this_thread::get_id())
            throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
        loader_.mutex_.lock();
        loader_.holder_ = std::this_thread::get_id();
    }
    ~Lock() {
        loader_.holder_ = std::thread::id();
        loader_.mutex_.unlock();
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

private:
    SchemaLoader& loader_;
};

SchemaLoader::SchemaLoader() = default;

SchemaLoader::~SchemaLoader() {
    const Lock lock(*this);
    newSchemaCallback = nullptr;
    std::exchange(schemas_, {}).clear();
}

std::unique_ptr<SchemaLoader>& SchemaLoader::pCurr() {
    static std::unique_ptr<SchemaLoader> current;
    if (!current)
        current.reset(new SchemaLoader);
    return current;
}

SchemaLoader& SchemaLoader::curr() {
    return *pCurr();
}

void SchemaLoader::vCurrFree() {
    auto& current = pCurr();
    {
        // A callback that frees the loader which is calling it gets its error here; the destructor cannot give one.
        const Lock notCalling(*current);
    }
    current.reset();
}

def::SchemaPset* SchemaLoader::pSchemaFromName(const std::string& name) {
    const Lock lock(*this);
    const auto found = schemas_.find(name);
    if (found != schemas_.end())
        return found->second.get();
    if (!newSchemaCallback)
        throw exception("No schema new callback registered");
    std::shared_ptr<def::SchemaPset> schema(newSchemaCallback(name));
    if (schema)
        schemas_.emplace(name, schema);
    return schema.get();
}

def::SchemaPset* SchemaLoader::pSchemaGet(NewSchemaCallback callback, const std::string& name) {
    return callback ? callback(name) : curr().pSchemaFromName(name);
}

} // namespace kiv::ifc
