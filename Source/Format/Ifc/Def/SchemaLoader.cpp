#include "kiv/Format/Ifc/Def/SchemaLoader.h"

#include "kiv/Base/Exception.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace kiv::ifc {

/// Holds the mutex; a thread that holds it already gets the error that the best of mutexes give, unless it
/// takes over what it holds.
class SchemaLoader::Lock {
public:
    explicit Lock(SchemaLoader& loader) : loader_(loader) {
        if (isHeldHere(loader_))
            throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
        loader_.mutex_.lock();
        loader_.holder_ = std::this_thread::get_id();
    }
    Lock(SchemaLoader& loader, std::adopt_lock_t) : loader_(loader) {}
    ~Lock() {
        loader_.holder_ = std::thread::id();
        loader_.mutex_.unlock();
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    static bool isHeldHere(const SchemaLoader& loader) {
        return loader.holder_ == std::this_thread::get_id();
    }

private:
    SchemaLoader& loader_;
};

SchemaLoader::SchemaLoader(Key) {}

SchemaLoader::~SchemaLoader() {
    // Held already when a callback ends the process: it never returns, and what it was called under is given
    // back here.
    const auto lock = Lock::isHeldHere(*this) ? Lock(*this, std::adopt_lock) : Lock(*this);
    newSchemaCallback = nullptr;
    std::exchange(schemas_, {}).clear();
}

std::unique_ptr<SchemaLoader>& SchemaLoader::pCurrOrNull() {
    static std::unique_ptr<SchemaLoader> current;
    return current;
}

std::unique_ptr<SchemaLoader>& SchemaLoader::pCurr() {
    auto& current = pCurrOrNull();
    if (!current)
        current = std::make_unique<SchemaLoader>(Key());
    return current;
}

SchemaLoader& SchemaLoader::curr() {
    return *pCurr();
}

void SchemaLoader::vCurrFree() {
    auto& current = pCurrOrNull();
    if (!current)
        return;
    {
        // A callback that frees the loader which is calling it gets its error here; the destructor cannot
        // give one.
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
