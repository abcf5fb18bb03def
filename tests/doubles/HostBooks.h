// HostBooks: owns every object of a scripted host, knows which interfaces the host offers and which
// objects are not back where they belong.
//
//   auto& port = books.make<HostPortDouble>("A");   // lives until the host ends
//   books.hide(IPortRegistry::iid);                 // the host does not have it for anybody
//   books.unbalanced();                             // {"bus(1): expected 0, is 1"}
#pragma once

#include "pluginterfaces/base/funknown.h"
#include "tests/doubles/CallScript.h"
#include "tests/doubles/HostObject.h"
#include "tools/host/HostText.h"

#include <array>
#include <deque>
#include <memory>
#include <set>
#include <unordered_map>

namespace doubles {

using Steinberg::Vst::play::HostText;

/** [any thread], but interfaces are hidden and shown while no call is under way. */
class HostBooks {
public:
    HostBooks(CallScript& calls, bool isUnicode)
    : script(calls)
    , unicode(isUnicode)
    {
    }

    template <class Object, class... Arguments>
    Object& make(Arguments&&... arguments)
    {
        auto object = std::make_unique<Object>(*this, std::forward<Arguments>(arguments)...);
        auto& result = *object;
        enter(std::move(object));
        return result;
    }

    void hide(const Steinberg::FUID& iid) { hidden.insert(key(iid)); }
    void show(const Steinberg::FUID& iid) { hidden.erase(key(iid)); }

    bool isHidden(const Steinberg::TUID queried) const
    {
        return hidden.count(key(Steinberg::FUID::fromTUID(queried))) > 0;
    }

    /** Whether the host offers the interface now: a question that tests can step into, recorded as
        "query(context, IHostClasses)" when traceQueries is set. */
    bool offers(const std::string& asked, const Steinberg::TUID queried);

    /** The host's text in its character set, or nonsense as the test said. */
    const Steinberg::char16* told(const HostText& own);

    /** "name: expected n, is m" for every object that is not back at its count, and a line for each
        that was released too often in between. */
    std::vector<std::string> unbalanced() const;

    /** The object behind any of the host's pointers, or null. */
    HostObject* find(const Steinberg::FUnknown* unknown) const;
    std::string nameOf(const Steinberg::FUnknown* unknown) const;

    CallScript& script;
    const bool unicode;           ///< the character set of every text and object
    bool traceQueries = false;    ///< record queryInterface calls
    bool traceReferences = false; ///< record addRef and release as "context.release()"

private:
    using Key = std::array<char, 16>;
    static Key key(const Steinberg::FUID& iid);

    void enter(std::unique_ptr<HostObject> object);

    mutable std::mutex mutex;
    std::deque<std::unique_ptr<HostObject>> objects;
    std::unordered_map<const Steinberg::FUnknown*, HostObject*> byUnknown;
    std::set<Key> hidden;
};

/** "IHostClasses" for an ID that the plug-in's boundary knows, else the ID's 32 digits. */
std::string interfaceName(const Steinberg::TUID queried);

} // namespace doubles
