// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/MessageLine.h"

/// What the window's messages are about. A topic has at most one message at a time.
enum class Topic {
    Verdict,         ///< what came of the newest run
    LogicSeries,     ///< repeated tests of a logic IC, and what they have counted
    Busy,            ///< what is refused while the tool works
    SecondPress,     ///< what a second press does
    Leftovers,       ///< what still prints after its run
    StaleRead,       ///< bytes that are older than the last Read
    NothingRead,     ///< no data to save, for want of a Read
    NothingToBurn,   ///< no data to save, for want of an image
    Composition,     ///< how the image came out
    Workspace,       ///< the file of the image to burn could not be written
    SharedFolder,    ///< others may write where the files are that the tool is given or writes
    ImageFile,       ///< that file was written again
    Binary,          ///< the opened binary: how it reads, or that it does not
    OpenedFile,      ///< the opened binary is another file by now
    Import,          ///< a file that could not be imported
    ImportedFile,    ///< a file that the opened binary was imported from is another by now
    Saving,          ///< a file of the user's was written, or not
    TakenNames,      ///< files of a set that are there already
    OtherMemories,   ///< what a Read brought besides code memory
    Entry,           ///< what was typed into a cell and not taken
    Block,           ///< what a change of a block came to
    BlockRefused,    ///< why a block was not changed
    Clipboard,       ///< a copied text that is being read
    ForgottenEdits,  ///< edits that can no longer be taken back
    ReplacedEdits,   ///< edits that a composition replaced
    RestoredImage,   ///< an image that has come back, and how the controls differ from it
    HiddenBytes,     ///< bytes behind the shown text
    Copy,            ///< too much to copy
    Address,         ///< an address that cannot be gone to
    Differences,     ///< what a step to a difference came to
    Device,          ///< a mark in the device's name
    Tool,            ///< a programmer tool that is missing
    Favourites,      ///< what became of a favourite
    Console,         ///< text that the console has dropped
    Settings,        ///< settings that are not saved
    SettingsKept,    ///< a damaged settings file, and where it is kept
    SettingsNotRead, ///< settings that could not be read at the start
};

/// What makes messages untrue.
enum class Event {
    RunBegan,          ///< of an operation; a search is none
    WorkEnded,         ///< nothing runs any more, nor will a series begin its next run
    ReadTaken,         ///< what a Read left has taken the place of the data read, be it nothing
    BytesRead,         ///< there are bytes of a chip
    ImageChanged,      ///< the data to burn
    ImageHasBytes,     ///< there are data to burn
    ImageWritten,      ///< its file holds the image, or there is none
    ImageMoved,        ///< the image has another file
    FileMoved,         ///< one of the four files that the tool is given or writes is another
    BinaryLoading,     ///< the opened binary is about to be read
    BinaryOnDisk,      ///< the file of the opened binary holds its bytes, as it did not before
    ImportAsked,       ///< a file is to be imported
    ImportsOnDisk,     ///< none of the files that it was imported from is another any more
    SavingBegan,       ///< a file of the user's is about to be chosen
    SettingsSaved,     ///< settings that could not be saved, or read, before
    DeviceChanged,     ///< the device's name
    ToolChanged,       ///< the programmer tool is another one
    BlockAsked,        ///< a block of the data to burn is to be changed
    BlockDone,         ///< a block of the data to burn is as it was asked to be
    RowsSelected,      ///< other rows than before, or of another content
    BytesSelected,     ///< other bytes of the tab's grid than before, be it by the cursor alone
    AddressChanged,    ///< the address to go to, or where it leads; or the cursor is there
    ClipboardRead,     ///< a copied text, or it cannot be
    FavouritesChanged, ///< the list of favourites
    FavouritesShown,   ///< the same, in its menu
    ConsoleCleared,    ///< all its text is gone
};

/// The window's messages. How serious a topic is and what ends it stand in one table here;
/// whoever has something to say gives the sentence alone.
class Messages {
public:
    using Action = MessageLine::Action;

    /// Says everything in \a line, which must outlive it.
    explicit Messages(MessageLine &line) : line_(line) {}

    /// Says \a sentence (translated) instead of what was said about \a topic before, as seriously
    /// as that topic usually is. An empty sentence takes that back, if no event ends the topic.
    void say(Topic topic, const QString &sentence, const Action &action = {});
    /// The same about something that has gone wrong.
    void sayTrouble(Topic topic, const QString &sentence, const Action &action = {});
    /// The same about what came of a run, which only its judge can tell.
    void sayVerdict(MessageLine::Severity severity, const QString &sentence,
                    const Action &action = {});
    /// Takes back what was said about \a topic, which must be one that no event ends.
    void takeBack(Topic topic);
    /// Takes back all that \a event makes untrue.
    void happened(Event event);

private:
    void set(Topic topic, MessageLine::Severity severity, const QString &sentence,
             const Action &action);
    void clear(Topic topic);

    MessageLine &line_;
};
