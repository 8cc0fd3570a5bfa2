// A puzzle: the answers that the player drags, the containers that take them, and the alternative
// contents that both are filled with.
//
//     p=RPuzzle 0
//
// A puzzle owns neither answers nor containers; whichever goes first, the other forgets it. An
// answer belongs to one puzzle at most. The texts and pictures that it makes itself are its own.
#pragma once

#include "dataset.h"
#include "omfontsource.h"
#include "omscrptb.h"
#include "ranswer.h"
#include "rcontainer.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class RText;

class RPuzzle final : public OMScriptableObject, private AnswerKeeper, private ContainerKeeper {
  public:
    static const OMSClass kClass;

    /// How an unbounded text lies at its x, by its flag; any other flag is FromLeft.
    enum class Alignment { FromLeft = 1, Centred = 2, ToRight = 3 };

    RPuzzle();
    ~RPuzzle() override;

    // For scripts. Objects are named by their variables; for a name that has none nothing happens.

    /// No answer is outside of a container.
    [[nodiscard]] bool areAnswersUsed() const;
    [[nodiscard]] bool areContainersFull() const;
    [[nodiscard]] bool isSolved() const;
    [[nodiscard]] int puzzleTextColorIndex() const { return textColorIndex_; }
    void setPuzzleTextColorIndex(int index) { textColorIndex_ = static_cast<std::uint16_t>(index); }
    [[nodiscard]] bool scrambleAnswers() const { return scrambles_; }
    void setScrambleAnswers(bool scrambles) { scrambles_ = scrambles; }
    // What containers get when they are added.
    [[nodiscard]] bool lockCorrectAnswers() const { return locksCorrect_; }
    void setLockCorrectAnswers(bool locks) { locksCorrect_ = locks; }
    [[nodiscard]] bool rejectIncorrectAnswers() const { return rejectsIncorrect_; }
    void setRejectIncorrectAnswers(bool rejects) { rejectsIncorrect_ = rejects; }

    void addAnswer(const std::string& answer);
    void removeAnswer(const std::string& answer);
    void addContainer(const std::string& container);
    void removeContainer(const std::string& container);
    /// Without any word of the puzzle's own about it.
    void addAnswerToContainer(const std::string& answer, const std::string& container);
    void removeAnswerFromContainer(const std::string& answer, const std::string& container);
    void anchorAnswers();
    void unanchorAnswers();
    void shiftAnswers(int dx, int dy);
    void shiftContainers(int dx, int dy);
    /// All answers go home.
    void reset();
    /// Fills the puzzle from one of its entries, by chance.
    void start();

    // Filling the entries. What comes after the declared arguments is read from the argument list.
    void setAnswer(int entry);
    void setContainer(int entry);
    void setPuzzleText(int entry, int number, int x, int y);
    void setPuzzleGraphic(int entry);
    void setPuzzleTextFont(const std::string& font, int size, const std::string& style,
                           int colorIndex);

  private:
    void onRetire() override;
    void answerPickedUp(RAnswer& answer) override;
    void answerDragged(RAnswer& answer, platform::Point position) override;
    void answerDropped(RAnswer& answer, platform::Point position) override;
    [[nodiscard]] std::vector<platform::Rect> answerPlaces(const RAnswer& answer) const override;
    void answerGoes(RAnswer& answer) override;
    void containerGoes(RContainer& container) override;

    [[nodiscard]] bool holds(const RAnswer& answer) const;
    [[nodiscard]] bool holds(const RContainer& container) const;
    [[nodiscard]] RContainer* bestContainer(RAnswer& answer, platform::Point position) const;
    [[nodiscard]] RContainer* hover() const;
    void setHover(RContainer* container);
    /// The answer is not dragged over anything any more.
    void endHover();
    /// Calls `use` for those that are in the list now, with their places in it, while they and the
    /// puzzle are still there: what is done to one may raise events.
    template <class Object, class Use>
    void forEach(const std::vector<Object*>& list, Use use);
    void put(RAnswer& answer, RContainer& container);
    void tellEnd();

    [[nodiscard]] DSEntry* entryToFill(int number);
    void fillAnswers(const DSEntry& entry);
    void fillContainers(const DSEntry& entry);
    void addGraphic(const DSGraphic& record);
    void addText(const DSText& record);

    DataSet dataSet_;
    OMTextFont font_{"URL has to be installed in RPuzzle"};
    std::uint16_t textColorIndex_ = 0;
    std::vector<std::unique_ptr<OMAnimation>> graphics_;
    std::vector<std::unique_ptr<RText>> texts_;
    std::vector<RAnswer*> answers_;
    std::vector<RContainer*> containers_;
    const RAnswer* dragged_ = nullptr; ///< by the player
    OMSWatch hover_;                   ///< the container that the dragged answer is over
    unsigned hoverChanges_ = 0;        ///< a handler of one may make another
    unsigned starts_ = 0;
    bool locksCorrect_ = false;
    bool rejectsIncorrect_ = false;
    bool scrambles_ = false;
};

template <class Object, class Use>
void RPuzzle::forEach(const std::vector<Object*>& list, Use use) {
    const std::vector<Object*> all = list;
    for (std::size_t place = 0; place < all.size(); ++place)
        if (holds(*all[place])) use(*all[place], place);
}
