#include "windows/Program.h"

#include <utility>

namespace kelvora {

namespace {

// The setup windows count from 1.
constexpr std::int16_t MainPanelIndex = 0;

}  // namespace

Program::Program(Platform platform, const LanguageFolders& folders)
    : world(std::move(platform)),
      texts(world.prompt),
      main(SetupMode::New, MainPanelIndex),
      files(texts, world.files, world.fileDialogs, main.OutInitDir),
      language(world.files, world.prompt, texts, folders),
      lines(world.ports, world.eventLoop),
      notes(world.journal, lines, texts),
      desk{.files = files,
           .lines = lines,
           .operation = operation,
           .notes = notes,
           .eventLoop = world.eventLoop,
           .defaults = main,
           .dataFolder = world.dataFolder,
           .templateFolder = folders.program + "/templates"}
{
    main.FileName = "Kelvora.dat";
}

}  // namespace kelvora
