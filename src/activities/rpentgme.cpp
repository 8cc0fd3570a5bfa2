#include "rpentgme.h"

#include "omeffectsounds.h"
#include "omformat.h"
#include "ommemcanvas.h"
#include "omsbirths.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "reports.h"

#include <algorithm>
#include <utility>

using platform::Point;
using platform::Rect;

namespace {

using Game = RPentominoGame;

constexpr OMSEntry kRPentominoGameVocabulary[] = {
    oms::data<&Game::cellsH, &Game::setCellsH>("cellsH", "columns; writing empties the board"),
    oms::data<&Game::cellsV, &Game::setCellsV>("cellsV", "rows; writing empties the board"),
    oms::data<&Game::cellHeight, &Game::setCellHeight>("cellHeight", "pixels"),
    oms::data<&Game::cellWidth, &Game::setCellWidth>("cellWidth", "pixels"),
    oms::data<&Game::flipperGraphicID, &Game::setFlipperGraphicID>(
        "flipperGraphicID", "tool that mirrors pieces; -1: none")
        .of("animation"),
    oms::data<&Game::pieceCellX, &Game::setPieceCellX>("pieceCellX", "[piece] its column"),
    oms::data<&Game::pieceCellY, &Game::setPieceCellY>("pieceCellY", "[piece] its row"),
    oms::data<&Game::pieceFlippedSoundID, &Game::setPieceFlippedSoundID>("pieceFlippedSoundID",
                                                                         "-1: none")
        .of("sound"),
    oms::data<&Game::pieceGoHomeSoundID, &Game::setPieceGoHomeSoundID>("pieceGoHomeSoundID",
                                                                       "-1: none")
        .of("sound"),
    oms::data<&Game::pieceGrabAOCursorID, &Game::setPieceGrabAOCursorID>(
        "pieceGrabAOCursorID", "of pieces that are held; -1: the default")
        .of("cursor"),
    oms::data<&Game::pieceGraphicID, &Game::setPieceGraphicID>(
        "pieceGraphicID", "[piece] its picture; writing makes the piece; -1: none")
        .of("animation"),
    oms::data<&Game::pieceIsAnchored, &Game::setPieceIsAnchored>("pieceIsAnchored",
                                                                 "[piece] it cannot be dragged"),
    oms::data<&Game::piecePickedUpSoundID, &Game::setPiecePickedUpSoundID>("piecePickedUpSoundID",
                                                                           "-1: none")
        .of("sound"),
    oms::data<&Game::pieceRotatedSoundID, &Game::setPieceRotatedSoundID>("pieceRotatedSoundID",
                                                                         "-1: none")
        .of("sound"),
    oms::data<&Game::pieceSnappedSoundID, &Game::setPieceSnappedSoundID>("pieceSnappedSoundID",
                                                                         "-1: none")
        .of("sound"),
    oms::data<&Game::pieceSpotAOCursorID, &Game::setPieceSpotAOCursorID>(
        "pieceSpotAOCursorID", "of pieces under the pointer; -1: the default")
        .of("cursor"),
    oms::data<&Game::piecesVisible, &Game::setPiecesVisible>("piecesVisible"),
    oms::data<&Game::pieceView, &Game::setPieceView>("pieceView",
                                                     "[piece] how it lies, from 0 to 7"),
    oms::data<&Game::rotaterGraphicID, &Game::setRotaterGraphicID>(
        "rotaterGraphicID", "tool that turns pieces; -1: none")
        .of("animation"),
    oms::data<&Game::solutionBoxGraphicID, &Game::setSolutionBoxGraphicID>(
        "solutionBoxGraphicID", "picture of a cell of the pattern; -1: none")
        .of("animation"),
    oms::method<&Game::reset>("reset"),
    oms::method<&Game::setPieceCellXY>("setPieceCellXY", "piece column row"),
    oms::method<&Game::setPieceHomeBox>("setPieceHomeBox", "piece left top right bottom"),
    oms::method<&Game::setSolutionString>("setSolutionString", "row cells"),
    oms::method<&Game::stamp>("stamp"),
    oms::method<&Game::unstamp>("unstamp"),
    oms::event("piecePickedUp", "the player has picked a piece up"),
    oms::event("solved", "a piece was put on the board, and the pattern is covered"),
};

constexpr int kDepthOfPieces = 1; ///< above the board

/// The cell whose left edge is nearest, the one farther right of two that are equally near.
int nearestCell(int offset, int size) {
    const int half = size / 2;
    return (offset >= 0 ? offset + half : offset - half + 1) / size;
}

std::shared_ptr<AOImage> imageOf(int id) { return id < 0 ? nullptr : AOImage::locate(id); }

} // namespace

/// Is shown only by the board, cell by cell.
class RPentominoGame::SolutionBox final : public OMAnimation {
  public:
    SolutionBox(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id)
        : OMAnimation(window, std::move(image), id, 0, 0) {
        pause();
        setVisible(false);
    }
    void drawAt(OMMemCanvas& canvas, const OMRegion& clip, Point at) { draw(canvas, clip, at); }
};

const OMSClass RPentominoGame::kClass{"RPentominoGame", &OMTrinket::kClass,
                                      kRPentominoGameVocabulary, &RPentominoGame::createFromScript,
                                      "x y [z]"};

RPentominoGame::RPentominoGame(OMTrinketWindow& window, Point corner)
    : OMTrinket(window, UpdateStyle::Regions, {corner.x, corner.y, corner.x, corner.y}) {
    setMovable(false);
}

RPentominoGame::~RPentominoGame() { retire(); }

void RPentominoGame::onRetire() {
    for (const Slot& each : slots_)
        if (each.piece) each.piece->retire();
    for (OMAnimation* part : {flipper_.get(), rotater_.get()})
        if (part) part->retire();
    OMTrinket::onRetire();
}

std::unique_ptr<OMScriptableObject> RPentominoGame::createFromScript() {
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (!window) return nullptr;
    OMSArguments& arguments = OMSArguments::global();
    const int left = OMTrinket::nearestPlace(arguments.nextInteger());
    const int top = OMTrinket::nearestPlace(arguments.nextInteger());
    auto game = std::make_unique<RPentominoGame>(*window, Point{left, top});
    game->setZ(arguments.nextInteger());
    return game;
}

// ---------------------------------------------------------------------------- slots

RPentominoGame::Slot& RPentominoGame::slotOf(const PentominoPiece& piece) {
    return *std::ranges::find_if(slots_,
                                 [&](const Slot& each) { return each.piece.get() == &piece; });
}

const RPentominoGame::Slot& RPentominoGame::slotOf(const PentominoPiece& piece) const {
    return *std::ranges::find_if(slots_,
                                 [&](const Slot& each) { return each.piece.get() == &piece; });
}

const RPentominoGame::Slot* RPentominoGame::nextSlot() const {
    const int piece = OMSArguments::global().nextInteger();
    return isPentomino(piece) ? &slots_[static_cast<std::size_t>(piece - 1)] : nullptr;
}

RPentominoGame::Slot* RPentominoGame::slotFor(int piece) {
    if (isPentomino(piece)) return &slot(piece);
    RWarn("RPentominoGame: invalid piece number");
    return nullptr;
}

RPentominoGame::Slot* RPentominoGame::nextSlotFor() {
    return slotFor(OMSArguments::global().nextInteger());
}

// ---------------------------------------------------------------------------- pieces on the board

/// None for a piece that does not lie within the board.
std::optional<PentominoCell> RPentominoGame::cellUnder(const PentominoPiece& piece) const {
    if (cellSize_.x <= 0 || cellSize_.y <= 0) return std::nullopt;
    const PentominoCell cell{nearestCell(piece.x() - x(), cellSize_.x),
                             nearestCell(piece.y() - y(), cellSize_.y)};
    return board_.contains(piece.shape(), cell) ? std::optional(cell) : std::nullopt;
}

void RPentominoGame::lift(PentominoPiece& piece) {
    if (piece.covers) board_.uncover(piece.shape(), *std::exchange(piece.covers, std::nullopt));
}

bool RPentominoGame::put(PentominoPiece& piece, PentominoCell at) {
    piece.place(x() + at.column * cellSize_.x, y() + at.row * cellSize_.y);
    board_.cover(piece.shape(), at);
    piece.covers = at;
    if (!board_.isSolved()) return true;
    fireEvent("solved");
    return !isRetired();
}

void RPentominoGame::putOrSendHome(PentominoPiece& piece, std::optional<PentominoCell> at) {
    if (at && board_.contains(piece.shape(), *at) && board_.isFree(piece.shape(), *at))
        put(piece, *at);
    else
        sendHome(piece);
}

Point RPentominoGame::homeOf(const PentominoPiece& piece) const {
    const Rect home = slotOf(piece).home;
    return {home.left + (home.width() - piece.width()) / 2, home.bottom - piece.height()};
}

void RPentominoGame::sendHome(PentominoPiece& piece) {
    const Point home = homeOf(piece);
    piece.place(home.x, home.y);
}

void RPentominoGame::turn(PentominoPiece& piece, int view, int sound) {
    onTool_.watch(&piece);
    piece.setView(view);
    playSound(sound);
}

// ---------------------------------------------------------------------------- the player

void RPentominoGame::piecePickedUp(PentominoPiece& piece) {
    lift(piece);
    playSound(sounds_.pickedUp);
    fireEvent("piecePickedUp");
}

void RPentominoGame::pieceDragged(PentominoPiece& piece) {
    lift(piece); // a script may have put it there meanwhile
    const bool onFlipper = flipper_ && piece.intersects(*flipper_);
    const bool onRotater = rotater_ && piece.intersects(*rotater_);
    if (!onTool_ && onFlipper)
        turn(piece, pentominoFlipped(piece.view()), sounds_.flipped);
    else if (!onTool_ && onRotater)
        turn(piece, pentominoTurned(piece.view()), sounds_.rotated);
    else if (onTool_ && !onFlipper && !onRotater)
        onTool_.watch(nullptr);
}

void RPentominoGame::pieceDropped(PentominoPiece& piece) {
    lift(piece);
    const std::optional<PentominoCell> cell = cellUnder(piece);
    if (!cell || !board_.isFree(piece.shape(), *cell)) {
        sendHome(piece);
        playSound(sounds_.goHome);
        return;
    }
    if (put(piece, *cell)) playSound(sounds_.snapped);
}

std::vector<Rect> RPentominoGame::piecePlaces(const PentominoPiece& piece) const {
    std::vector<Rect> places;
    const auto lyingAt = [&](Point corner) {
        places.push_back({corner.x, corner.y, corner.x + piece.width(), corner.y + piece.height()});
    };
    for (const OMAnimation* tool : {flipper_.get(), rotater_.get()})
        if (tool && tool->isShown())
            lyingAt({tool->x() + (tool->width() - piece.width()) / 2,
                     tool->y() + (tool->height() - piece.height()) / 2});
    lyingAt(homeOf(piece));
    if (cellSize_.x <= 0 || cellSize_.y <= 0) return places;
    for (PentominoCell cell{0, 0}; cell.row < board_.rows(); ++cell.row)
        for (cell.column = 0; cell.column < board_.columns(); ++cell.column)
            if (board_.contains(piece.shape(), cell) && board_.isFree(piece.shape(), cell))
                lyingAt({x() + cell.column * cellSize_.x, y() + cell.row * cellSize_.y});
    return places;
}

void RPentominoGame::playSound(int id) {
    OMEffectSounds::playIfAny(id, "soundURLEx == NULL",
                              "Extended Sound URL is not installed in RPentominoGame");
}

// ---------------------------------------------------------------------------- pieces for scripts

std::string RPentominoGame::pieceCell(int PentominoCell::*axis) const {
    const Slot* found = nextSlot();
    const auto cell = found && found->piece ? cellUnder(*found->piece) : std::nullopt;
    return cell ? oms::toText((*cell).*axis) : std::string();
}

/// A piece on the board goes to another column or row.
void RPentominoGame::movePieceCell(int PentominoCell::*axis, int value) {
    const int piece = OMSArguments::global().nextInteger();
    const Slot* found = slotFor(piece);
    if (!found || !found->piece) return;
    std::optional<PentominoCell> cell = cellUnder(*found->piece);
    if (!cell) return;
    (*cell).*axis = value;
    setPieceCellXY(piece, cell->column, cell->row);
}

std::string RPentominoGame::pieceGraphicID() const {
    const Slot* found = nextSlot();
    return found ? oms::toText(idOf(found->piece.get())) : std::string();
}

void RPentominoGame::setPieceGraphicID(int id) {
    const int number = OMSArguments::global().nextInteger();
    Slot* found = slotFor(number);
    std::shared_ptr<AOImage> image = found && window() ? imageOf(id) : nullptr;
    if (!image) return;
    if (found->piece) lift(*found->piece);
    found->piece.reset();
    PentominoPlayer& player = *this;
    found->piece =
        std::make_unique<PentominoPiece>(player, number, *window(), std::move(image), id);
    OMSBirths births;
    births.add(*found->piece, PentominoPiece::kClass);
    found->piece->setZ(depthAbove(kDepthOfPieces));
    found->piece->setVisible(piecesVisible_);
    giveCursors(*found->piece);
}

std::string RPentominoGame::pieceIsAnchored() const {
    const Slot* found = nextSlot();
    return found && found->piece ? oms::toText(!found->piece->isMovable()) : std::string();
}

void RPentominoGame::setPieceIsAnchored(bool anchored) {
    const Slot* found = nextSlotFor();
    if (found && found->piece) found->piece->setMovable(!anchored);
}

std::string RPentominoGame::pieceView() const {
    const Slot* found = nextSlot();
    if (!found) return {};
    return oms::toText(found->piece ? found->piece->view() : 0);
}

void RPentominoGame::setPieceView(int view) {
    const Slot* found = nextSlotFor();
    if (!found || !found->piece) return;
    PentominoPiece& piece = *found->piece;
    const std::optional<PentominoCell> cell = cellUnder(piece);
    lift(piece);
    if (isPentominoView(view)) piece.setView(view);
    putOrSendHome(piece, cell);
}

void RPentominoGame::setPieceCellXY(int number, int column, int row) {
    const Slot* found = slotFor(number);
    if (!found) return;
    if (!found->piece)
        return RWarn(OMFormat("RPentominoGame: no piece for piece number %d", number));
    PentominoPiece& piece = *found->piece;
    const PentominoCell cell{column, row};
    if (!board_.contains(piece.shape(), cell))
        return RWarn(OMFormat("RPentominoGame: invalid (X,Y) for piece %d", number));
    lift(piece);
    putOrSendHome(piece, cell);
}

void RPentominoGame::setPieceHomeBox(int number, int left, int top, int right, int bottom) {
    Slot* found = slotFor(number);
    if (!found) return;
    found->home = {OMTrinket::nearestPlace(left), OMTrinket::nearestPlace(top),
                   OMTrinket::nearestPlace(right), OMTrinket::nearestPlace(bottom)};
    if (!found->piece) return;
    lift(*found->piece);
    sendHome(*found->piece);
}

void RPentominoGame::reset() {
    for (const Slot& each : slots_) {
        if (!each.piece || !each.piece->isMovable()) continue;
        if (!each.piece->covers && !cellUnder(*each.piece)) continue;
        lift(*each.piece);
        sendHome(*each.piece);
    }
}

void RPentominoGame::setPiecesVisible(bool visible) {
    piecesVisible_ = visible;
    for (const Slot& each : slots_)
        if (each.piece) each.piece->setVisible(visible);
}

void RPentominoGame::setPieceGrabAOCursorID(int id) {
    grabCursorId_ = OMNarrowId(id);
    for (const Slot& each : slots_)
        if (each.piece) giveCursors(*each.piece);
}

void RPentominoGame::setPieceSpotAOCursorID(int id) {
    spotCursorId_ = OMNarrowId(id);
    for (const Slot& each : slots_)
        if (each.piece) giveCursors(*each.piece);
}

void RPentominoGame::giveCursors(PentominoPiece& piece) const {
    const auto chosen = [](int id, int fallback) { return id == kNone ? fallback : id; };
    OMSetCursors(piece, chosen(spotCursorId_, defaultCursor),
                 chosen(grabCursorId_, defaultGrabCursor),
                 "Cursor URL is not installed in RPentominoGame");
}

// ---------------------------------------------------------------------------- the board

void RPentominoGame::setCellsH(int columns) {
    if (columns <= 0) return RWarn("RPentominoGame: cellsH must be greater than 0");
    resize(columns, board_.rows());
}

void RPentominoGame::setCellsV(int rows) {
    if (rows <= 0) return RWarn("RPentominoGame: cellsV must be greater than 0");
    resize(board_.columns(), rows);
}

/// The pieces stay where they are seen, and cover nothing.
void RPentominoGame::resize(int columns, int rows) {
    columns = std::min(columns, PentominoBoard::kLongestSide);
    rows = std::min(rows, PentominoBoard::kLongestSide);
    if (columns == board_.columns() && rows == board_.rows()) return;
    for (const Slot& each : slots_)
        if (each.piece) each.piece->covers.reset();
    board_.resize(columns, rows);
    spanCells();
}

void RPentominoGame::setCellSize(int Point::*axis, int pixels) {
    cellSize_.*axis = std::clamp(pixels, 0, kLargestCell);
    spanCells();
}

void RPentominoGame::spanCells() {
    markChanged();
    setBounds({x(), y(), x() + board_.columns() * cellSize_.x, y() + board_.rows() * cellSize_.y});
    redraw();
}

void RPentominoGame::redraw() { markWhole(); }

void RPentominoGame::setSolutionString(int row, const std::string& cells) {
    if (row < 1 || row > board_.rows()) return RWarn("RPentominoGame: invalid row number");
    if (cells.size() > static_cast<std::size_t>(board_.columns()))
        return RWarn("RPentominoGame: solution string too long");
    board_.setTarget(row - 1, cells);
    redraw();
}

int RPentominoGame::idOf(const OMAnimation* graphic) {
    return graphic ? graphic->resourceId() : kNone;
}

void RPentominoGame::replaceTool(std::unique_ptr<OMAnimation>& tool, int id) {
    std::shared_ptr<AOImage> image = window() ? imageOf(id) : nullptr;
    if (!image) return;
    tool = std::make_unique<OMAnimation>(*window(), std::move(image), id, OMAnimation::kEmbedded,
                                         OMAnimation::kEmbedded);
    OMSBirths births;
    births.add(*tool, OMAnimation::kClass);
    tool->setMovable(false);
    tool->setTouchy(false);
}

int RPentominoGame::solutionBoxGraphicID() const { return idOf(solutionBox_.get()); }

void RPentominoGame::setSolutionBoxGraphicID(int id) {
    std::shared_ptr<AOImage> image = window() ? imageOf(id) : nullptr;
    if (!image) return;
    solutionBox_ = std::make_unique<SolutionBox>(*window(), std::move(image), id);
    redraw();
}

void RPentominoGame::paint(OMMemCanvas& canvas, const OMRegion& clip) {
    OMRegion part = clip;
    part.intersect(boundingRectangle());
    paintBoxes(canvas, part, {x(), y()});
}

void RPentominoGame::paintBoxes(OMMemCanvas& canvas, const OMRegion& clip, Point corner) {
    if (!solutionBox_ || clip.isEmpty()) return;
    for (int row = 0; row < board_.rows(); ++row)
        for (int column = 0; column < board_.columns(); ++column)
            if (board_.isTarget({column, row}))
                solutionBox_->drawAt(
                    canvas, clip, {corner.x + column * cellSize_.x, corner.y + row * cellSize_.y});
}

/// Without a box, or where it shows nothing, nothing is left there.
void RPentominoGame::stamp() {
    if (!window() || !solutionBox_) return;
    window()->stamp(*this, boundingRectangle(), [this](OMMemCanvas& canvas, Point at) {
        paintBoxes(canvas, OMRegion(canvas.bounds()), at);
    });
}

void RPentominoGame::unstamp() {
    if (window()) window()->unstamp(*this);
}

void RPentominoGame::setAttribute(Attribute which, int value, int second) {
    const Rect before = boundingRectangle();
    OMTrinket::setAttribute(which, value, second);
    const Rect after = boundingRectangle();
    for (const Slot& each : slots_) {
        if (!each.piece) continue;
        if (each.piece->covers)
            each.piece->offset(after.left - before.left, after.top - before.top);
        if (which == Attribute::Z) each.piece->setZ(depthAbove(kDepthOfPieces));
    }
}
