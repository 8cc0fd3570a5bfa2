// A service of an upper floor that the floors below find here while it lives.
//
//     class OMFontSource : public OMInstalled<OMFontSource> { ... };
#pragma once

#include "omdebug.h"

template <class Service>
class OMInstalled {
  public:
    /// In place of the one that there was.
    OMInstalled() { current_ = this; }
    OMInstalled& operator=(OMInstalled&&) = delete;

    /// Null while there is none. Not owned.
    [[nodiscard]] static Service* current() { return static_cast<Service*>(current_); }
    static void setCurrent(Service* service) { current_ = service; }
    /// For those who cannot do without it: null is a failed check too.
    [[nodiscard]] static Service* require(std::string_view condition, std::string_view message,
                                          OMDebug::Place place = OMDebug::Place::here()) {
        OMDebug::check(current_ != nullptr, condition, message, place);
        return current();
    }

  protected:
    ~OMInstalled() {
        if (current_ == this) current_ = nullptr;
    }

  private:
    static inline OMInstalled* current_ = nullptr;
};
