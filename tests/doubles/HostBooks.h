// HostBooks: owns every object of a scripted host. Knows which interfaces the host offers, and
// which references the plug-in has not given back.
//
//   auto& port = books.make<HostPortDouble>("A");   // lives until the host ends
//   books.hide(IPortRegistry::iid);                 // no object of the host offers it
//   books.unbalanced();                             // {"bus(1): expected 0, is 1"}
#pragma once

#include "pluginterfaces/base/funknown.h"
#include "tests/doubles/CallScript.h"
#include "tests/doubles/HostObject.h"
#include "tools/host/HostText.h"

#include <array>
#include <deque>
#include <map>
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

    /** Whether the host offers the interface now. A call that a test can let fail; recorded as
        "query(context, IHostClasses)" when traceQueries is set. */
    bool isOffered(const std::string& asked, const Steinberg::TUID queried);

    /** IHostClasses gives what get gives: a new reference, or null. */
    void offer(const Steinberg::FUID& iid, std::function<Steinberg::FUnknown*()> get)
    {
        offers[key(iid)] = std::move(get);
    }
    Steinberg::FUnknown* offered(const Steinberg::TUID queried);

    /** The text in the host's character set, or the wrong one that the test wants. */
    const Steinberg::char16* told(const HostText& own);

    /** "name: expected n, is m" for every object with another count than expected, and a line for
        each that was released too often in between. */
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
    std::map<Key, std::function<Steinberg::FUnknown*()>> offers;
};

/** "IHostClasses" and the like; for an unknown ID its 32 digits. */
std::string interfaceName(const Steinberg::TUID queried);

} // namespace doubles
