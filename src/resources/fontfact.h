// The font factory: hands out fonts by what they are called, each made once for all who use it, and
// gives some in place of others, so that texts look the same on every machine.
#pragma once

#include "omfontsource.h"
#include "omlink.h"

#include <memory>
#include <string>
#include <variant>
#include <vector>

class OMFont;
class OMIStream;

/// What a font is asked for by: itself, an `NFNT` resource, or a TrueType face.
struct RTrueTypeKey {
    std::string face;
    int style = 0; ///< bits, see OMFont
    int size = 0;  ///< pixels of the em square
    friend bool operator==(const RTrueTypeKey&, const RTrueTypeKey&) = default;
};
using RFontKey = std::variant<OMFont*, int, RTrueTypeKey>;

class FontFactory final : public OMFontSource {
  public:
    using Locator = OMLinkTo<std::unique_ptr<OMIStream>(int id)>;

    /// Its table of substitutions is empty.
    FontFactory();
    /// Destroys all fonts; those that are still used are told in the log.
    ~FontFactory() override;

    /// How the `NFNT` resource of an id is found.
    void setNFNTLocator(Locator locator) { locator_ = std::move(locator); }

    /// From now on `NFNT` resources are read anew; who uses a font keeps it.
    void forgetResources();

    /// Registers a font of the caller's making. It may be replaced by another one, and is gone
    /// then.
    OMFont& useFont(std::unique_ptr<OMFont> font);
    OMFont& useFont(OMFont& font) override;
    [[nodiscard]] OMFont& useNFNT(int id) override;
    [[nodiscard]] OMFont& useTrueType(std::string_view face, int style, int size) override;
    /// The font goes with its last use. A font that is not the factory's has no effect.
    void doneUsing(OMFont& font) override;

    /// Whoever asks for `source` gets `substitute`. One that a source has already is replaced.
    void addSubstitution(const RFontKey& source, const RFontKey& substitute);
    /// Those of the faces that the game's texts were written for.
    void addGameSubstitutions();

  private:
    struct Record {
        RFontKey key;
        std::unique_ptr<OMFont> font;
        int uses = 1;
        bool isOutdated = false; ///< found by nobody who does not have it
    };
    struct Substitution {
        RFontKey source;
        RFontKey substitute;
    };

    OMFont& use(const RFontKey& key, int replaced);
    [[nodiscard]] const RFontKey* substituteFor(const RFontKey& key) const;
    [[nodiscard]] Record* find(const RFontKey& key);
    /// Null after a line in the log.
    [[nodiscard]] std::unique_ptr<OMFont> make(const RFontKey& key) const;
    [[nodiscard]] std::unique_ptr<OMFont> makeNFNT(int id) const;
    OMFont& addRecord(RFontKey key, std::unique_ptr<OMFont> font);
    void forgetSubstitutions(const OMFont& font);

    Locator locator_;
    std::vector<Record> records_;
    std::vector<Substitution> substitutions_;
};
