// The application object: one per process. It owns the list of periodic tasks, takes the messages
// of the platform, hands mouse and keys to its windows and runs the main loop.
//
// One pass of the loop handles at most one message, then gives the windows their idle time and runs
// every task once. Nothing waits inside a pass, so a host that has a loop of its own can call it.
#pragma once

#include "omcolor.h"
#include "omlink.h"
#include "omtask.h"
#include "omwindow.h"

#include "platform/dialogs.h"
#include "platform/events.h"
#include "platform/geometry.h"

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// A key that is a command too.
struct OMAccelerator {
    platform::KeyPress key;
    int command;
};

class OMApp {
  public:
    /// How the main window stands on the screen.
    enum class DisplayMode : std::uint8_t {
        Overlapped = 0,    ///< an overlapped window with sizing frame at the rectangle
        Captioned = 1,     ///< caption, system menu and minimise box, covering the desktop
        PopUp = 2,         ///< pop-up with system menu: covering the desktop, or at the upper left
        PopUpMinimise = 3, ///< as PopUp with a minimise box, covering the desktop
        FullScreen = 4,    ///< exclusive full screen
    };
    static constexpr std::uint32_t kAlertStyle = 0x3000; ///< OK, task-modal and system-modal
    static constexpr std::uint32_t kAskStyle = 0x24;     ///< Yes and No, with a question mark

    // What canvases are made of, chosen before there is an application (a failed check later):
    // bitmaps of any depth in memory, or surfaces of the screen's own depth.
    static void useGDI();
    static void useDirectDraw();
    /// Fatal without an application.
    [[nodiscard]] static bool usingDirectDraw();
    /// Of canvases that go to the screen: that of the surfaces, else 8 bits. Fatal as above.
    [[nodiscard]] static int bufferDepth();

    /// `rectangle` in screen pixels. In mode FullScreen the screen gets the rectangle's size and
    /// that depth for this program alone; when it cannot, and without surfaces, the mode becomes
    /// PopUp. Monitors count from 1.
    OMApp(DisplayMode mode, const OMColor& background, const platform::Rect& rectangle, int depth,
          int monitor = 1);
    virtual ~OMApp();
    OMApp& operator=(OMApp&&) = delete;

    [[nodiscard]] static OMApp* getApp() { return instance_; }

    [[nodiscard]] int monitor() const { return monitor_; }
    [[nodiscard]] const std::string& productName() const { return productName_; }
    [[nodiscard]] bool isRunning() const { return running_; }
    /// Whether somebody asked for the end while a box was open, and the quit message is about to
    /// come. Nothing else happens until then: there are no tasks and no idle work.
    [[nodiscard]] bool isLeaving() const { return leaving_ && running_; }
    [[nodiscard]] OMTaskList& tasks() { return tasks_; }

    /// Paints the window and runs passes until `stop` is called.
    void run();
    /// What `run` does before its first pass; for hosts with a loop of their own.
    void begin();
    /// One pass; false when the loop has ended.
    bool pass();
    /// Ends the loop after the current pass.
    void stop();
    /// Called once when the loop is asked to end, by whomever: all is still there.
    void setStopLink(OMLink link) { stopLink_ = std::move(link); }

    /// The product's name and version, in a box; the main window's menu has an entry for it.
    void about();
    /// A message box owned by the main window. Who asks for the end of the program closes it; see
    /// `isLeaving`.
    platform::Button box(std::string_view text, std::uint32_t style, std::string_view caption);
    /// A warning to the game's author, to be read only.
    void alert(std::string_view text, std::uint32_t style = kAlertStyle,
               std::string_view caption = "Alert");
    /// What the player is told of the machine, see Platform::tellPlayer; no alert to scripts.
    void tellPlayer(std::string_view text, std::string_view caption);
    /// As an alert, a question; whether the answer is Yes.
    [[nodiscard]] bool ask(std::string_view text, std::string_view caption);
    /// Called with true before every box, and with false when it is closed.
    void setBoxLink(OMLinkTo<void(bool)> link) { boxLink_ = std::move(link); }
    /// Is told the text of every alert, before its box.
    void setWarningLink(OMLinkTo<void(std::string_view)> link) { warningLink_ = std::move(link); }
    /// Called after every box.
    void setAlertedLink(OMLink link) { alertedLink_ = std::move(link); }

    /// Is offered each message of the platform first; true keeps it from everybody else.
    void setMessageFilter(OMLinkTo<bool(const platform::Message&)> filter) {
        messageFilter_ = std::move(filter);
    }
    /// As if it came from the platform, before what waits there, but not through the filter; its
    /// turn is one of the next passes.
    void post(const platform::Message& message) { posted_.push_back(message); }

    /// Drops all input that waits; no window has the mouse afterwards.
    void discardInput();

    /// While set, a pass waits for a message and does no idle work and no tasks.
    void setWaitForMessages(bool wait) { waitForMessages_ = wait; }
    /// Is offered every menu command; true when it was handled.
    void setCommandHandler(OMLinkTo<bool(int)> handler) { commandHandler_ = std::move(handler); }
    /// Keys whose commands the handler gets, unless `isTyping` says that somebody wants them as
    /// text. The windows hear them afterwards, as all keys.
    void setAccelerators(std::vector<OMAccelerator> table, OMLinkTo<bool()> isTyping);
    void setBackgroundLink(OMLink link) { backgroundLink_ = std::move(link); }
    void setForegroundLink(OMLink link) { foregroundLink_ = std::move(link); }
    /// Told when the person wants to hear texts, and when that ends.
    void setSpeechLink(OMLinkTo<void(bool)> link) { speechLink_ = std::move(link); }

  protected:
    virtual void beforeMessage(const platform::Message&) {}
    virtual void afterMessage(const platform::Message&) {}
    virtual void idle() {}

  private:
    /// The next message for the program; false when there is none.
    bool takeMessage(platform::Message& message);
    void dispatch(const platform::Message& message);
    void tryAccelerators(const platform::KeyPress& key);
    /// The window under a mouse message; the one that got the button down keeps the mouse.
    OMWindow* mouseWindow(const platform::Message& message);

    void aroundBox(const OMLink& showBox);

    void readVersion();
    void startDisplay();
    [[nodiscard]] platform::Rect mainWindow() const;
    void tellDroppedRelease();
    void tellReleaseLost();

    static OMApp* instance_;
    static inline bool wantsDirectDraw_ = false;

    DisplayMode displayMode_;
    OMColor background_;
    platform::Rect rectangle_;
    int depth_;
    int monitor_;
    std::string productName_;
    std::string productVersion_;
    bool running_ = false;
    bool leaving_ = false;
    bool waitForMessages_ = false;
    OMTaskList tasks_;
    OMWindowList windows_;
    std::deque<platform::Message> posted_;
    OMLinkTo<bool(const platform::Message&)> messageFilter_;
    OMLinkTo<bool(int)> commandHandler_;
    std::vector<OMAccelerator> accelerators_;
    OMLinkTo<bool()> isTyping_;
    OMLink stopLink_;
    OMLink backgroundLink_;
    OMLink foregroundLink_;
    OMLinkTo<void(bool)> speechLink_;
    OMLinkTo<void(bool)> boxLink_;
    OMLink alertedLink_;
    OMLinkTo<void(std::string_view)> warningLink_;
};
