// The base of a controller: its place in a host and the size that it wants there.
#pragma once

#include "platform/views/ExtensionContext.h"
#include "platform/views/Geometry.h"

namespace corvane {

class ViewController {
  public:
    /// @param extensionContext  the host; outlives the controller
    explicit ViewController(ExtensionContext& extensionContext) : extensionContext_(extensionContext) {}
    virtual ~ViewController() = default;
    ViewController(const ViewController&) = delete;
    ViewController& operator=(const ViewController&) = delete;

    /// One-time set-up; the host calls it once before anything else.
    virtual void viewDidLoad() {}
    virtual void didReceiveMemoryWarning() {}

    ExtensionContext& extensionContext() const { return extensionContext_; }

    Size preferredContentSize() const { return preferredContentSize_; }
    void setPreferredContentSize(Size size) { preferredContentSize_ = size; }

  private:
    ExtensionContext& extensionContext_;
    Size preferredContentSize_;
};

}  // namespace corvane
