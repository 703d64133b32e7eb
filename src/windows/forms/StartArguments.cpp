#include "windows/forms/StartArguments.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "platform/qt/Text.h"
#include "ports/StartOptions.h"

namespace kelvora {

namespace {

QStringList AbsolutePaths(const QStringList& arguments)
{
    QStringList paths;
    for (const QString& argument : arguments)
        paths << QFileInfo(argument).absoluteFilePath();
    return paths;
}

[[noreturn]] void RefuseArgument(const QString& argument, const char* reason)
{
    std::fprintf(stderr, "kelvora: %s: %s\n", qPrintable(argument), reason);
    std::exit(2);
}

QString Sentence(std::string_view text)
{
    return ToQString(text) + QLatin1Char('.');
}

QCommandLineOption ParserOption(const StartOption& option)
{
    return {ToQString(option.name), Sentence(option.help), ToQString(option.value)};
}

}  // namespace

StartArguments ReadStartArguments(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(Sentence(StartSummary));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption line = ParserOption(StartOptions::Line);
    const QCommandLineOption bench = ParserOption(StartOptions::Bench);
    const QCommandLineOption benchState = ParserOption(StartOptions::BenchState);
    parser.addOptions({line, bench, benchState});
    parser.addPositionalArgument(QStringLiteral("files"), Sentence(StartFilesHelp),
                                 QStringLiteral("[files...]"));
    parser.process(application);
    StartArguments arguments{AbsolutePaths(parser.positionalArguments()), {}, parser.isSet(bench), {}};
    for (const QString& value : parser.values(line)) {
        try {
            arguments.lines.push_back(ParseLineArgument(PathFromQString(value)));
        } catch (const std::invalid_argument& error) {
            RefuseArgument(QStringLiteral("--line ") + value, error.what());
        }
    }
    if (parser.isSet(benchState)) {
        arguments.bench = true;
        arguments.benchState = PathFromQString(QFileInfo(parser.value(benchState)).absoluteFilePath());
    }
    return arguments;
}

}  // namespace kelvora
