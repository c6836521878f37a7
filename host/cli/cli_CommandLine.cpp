#include "host/cli/cli_CommandLine.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <exception>
#include <iostream>
#include <limits>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "host/cli/cli_Clearance.h"
#include "host/cli/cli_Commands.h"
#include "host/model/hst_Classes.h"
#include "host/model/hst_Error.h"
#include "host/model/hst_PartName.h"

namespace {

constexpr int kDone = 0;
constexpr int kFindings = 1;
constexpr int kBadInput = 2;

constexpr const char* kDescription =
    "Looks into mesh and assembly files, checks which parts interfere or come too close, and "
    "keeps\n"
    "what it finds in a database.";
constexpr const char* kFooter =
    "Exit status: 0 done, without findings or differences; 1 with findings ('clearance', 'show' "
    "of\n"
    "a check) or differences ('diff'); 2 bad input or wrong usage, with one line on standard\n"
    "error; 130 after Ctrl-C; of 'run' that of the script.\n"
    "'ktsovu COMMAND --help' tells the options of a command.";

std::string DefaultLimit(int base, int perMiB) {
    return std::to_string(base) + " plus " + std::to_string(perMiB) + " for every MiB of the file)";
}

template <class T>
void AddLimit(CLI::App& command, const std::string& name, std::optional<T>& limit,
              const std::string& unit, const std::string& description) {
    const CLI::Range positive(1, std::numeric_limits<int>::max());
    command.add_option(name, limit, description)
        ->type_name(unit)
        ->check(CLI::Validator(positive).description(""));
}

const std::map<std::string, g3d_SavedViewIdEnum> kViews = {
    {"front", g3d_VIEW_FRONT},   {"back", g3d_VIEW_BACK},   {"top", g3d_VIEW_TOP},
    {"bottom", g3d_VIEW_BOTTOM}, {"right", g3d_VIEW_RIGHT}, {"left", g3d_VIEW_LEFT},
    {"iso", g3d_VIEW_ISOMETRIC}};

void AddPicture(CLI::App& command, cli_PictureRequest& request) {
    CLI::Option* picture =
        command
            .add_option(
                "--picture", request.file,
                "Draw the parts into this PNG or SVG file: each in a colour of its own, or, of a\n"
                "check, those with findings in colours")
            ->type_name("FILE.png|FILE.svg");
    command
        .add_option_function<std::string>(
            "--view", [&request](const std::string& name) { request.view = kViews.at(name); },
            "Side that it shows, y being up: front, back, top, bottom, right, left, iso (default)")
        ->type_name("VIEW")
        ->check(CLI::Validator(CLI::IsMember(&kViews)).description(""))
        ->needs(picture);
}

void AddJson(CLI::App& command, bool& json) {
    command.add_flag("--json", json, "Print JSON, with every number in full");
}

void AddModels(CLI::App& command, std::vector<std::string>& models) {
    command.add_option("MODEL", models, "STL, OBJ, PLY, OFF, 3MF, glTF, Collada or IFC file")
        ->required();
}

void AddLimits(CLI::App& command, imp_ReadLimits& limits) {
    AddLimit(command, "--memory-limit", limits.memoryMiB, "MIB",
             "Memory that reading one model may take (default: " +
                 DefaultLimit(imp_ReadLimits::BASE_MIB, imp_ReadLimits::MIB_PER_MIB));
    AddLimit(command, "--time-limit", limits.seconds, "SECONDS",
             "Time that reading one model may take (default: " +
                 DefaultLimit(imp_ReadLimits::BASE_SECONDS, imp_ReadLimits::SECONDS_PER_MIB));
}

void AddInspect(CLI::App& app, cli_InspectRequest& request) {
    CLI::App* command = app.add_subcommand(
        "inspect",
        "Read models and print a table of their parts: triangles and box in model space.");
    AddModels(*command, request.models);
    command
        ->add_option("--save", request.database,
                     "Save the parts in this database, in place of those saved there before")
        ->type_name("FILE.db");
    AddPicture(*command, request.picture);
    AddJson(*command, request.json);
    AddLimits(*command, request.limits);
    command->footer(
        "Lengths are in the unit of the file. A part is what one node of the scene places; parts "
        "of\n"
        "the same name are told apart by '#2', '#3' and so on. A model is read in a process of "
        "its\n"
        "own, which is ended at the limits: a model that needs more is refused.");
    command->callback([&request] { cli_Inspect(request); });
}

void AddClearance(CLI::App& app, cli_ClearanceRequest& request, int& status) {
    CLI::App* command = app.add_subcommand("clearance",
                                           "Check which parts interfere or come closer than "
                                           "allowed, and print where and by how much.");
    AddModels(*command, request.models);
    command
        ->add_option("--gap", request.gap,
                     "Clearance that parts must keep: nearer ones are findings (default: 0)")
        ->type_name("LENGTH");
    command
        ->add_option("--touch", request.touch,
                     "Length within which surfaces count as touching and not as interfering\n"
                     "(default: a millionth of the diagonal of the assembly)")
        ->type_name("LENGTH");
    command
        ->add_option("--move", request.moves,
                     "Turn a part by rx, ry, rz degrees about the model's x, y, z axes, in that\n"
                     "order, through the centre of its box, then move it by x, y, z; repeatable")
        ->type_name("PART=x,y,z[,rx,ry,rz]")
        ->expected(1)
        ->take_all();
    command->add_option("--ignore", request.ignored, "Leave a pair of parts unchecked; repeatable")
        ->type_name("PART:PART")
        ->expected(1)
        ->take_all();
    command
        ->add_option(
            "--top", request.labelCount,
            "Number of findings that get a label and an arrow in the picture (default: 10;\n"
            "30 have room)")
        ->type_name("N");
    command
        ->add_option(
            "--save", request.database,
            "Save the parts and the result in this database, in place of those saved there "
            "before")
        ->type_name("FILE.db");
    AddPicture(*command, request.picture);
    AddJson(*command, request.json);
    AddLimits(*command, request.limits);
    command->footer(
        "Lengths are in the unit of the file. A pair of parts is\n"
        "  crossing   when the surfaces meet and a point of one lies deeper in the other than\n"
        "             the touch length,\n"
        "  enclosed   when the surfaces are farther apart than that and one part is in the other,\n"
        "  touching   when the surfaces are no farther apart than that,\n"
        "  too close  when they are nearer than the gap.\n"
        "All but touching pairs are findings. A part that has no clear inside, since it is not "
        "closed\n"
        "or inside out, is named in a warning.\n"
        "Exit status: 0 without findings, 1 with findings, 2 bad input or wrong usage.");
    command->callback([&] { status = cli_Clearance(request) ? kFindings : kDone; });
}

void AddDiff(CLI::App& app, cli_DiffRequest& request, int& status) {
    CLI::App* command = app.add_subcommand(
        "diff", "Print which findings are new, gone or changed from one saved check to another.");
    command->add_option("OLD.db", request.before, "A database that 'clearance --save' wrote")
        ->required();
    command->add_option("NEW.db", request.after, "Another one")->required();
    command->footer(
        "Parts are matched by their names. A finding has changed when it is of another kind, or "
        "its\n"
        "length differs by more than the touch length.\n"
        "Exit status: 0 without differences, 1 with differences, 2 bad input or wrong usage.");
    command->callback([&] { status = cli_Diff(request) ? kFindings : kDone; });
}

void AddShow(CLI::App& app, cli_ShowRequest& request, int& status) {
    CLI::App* command = app.add_subcommand(
        "show", "Print what a database holds, as 'inspect' or 'clearance' printed it.");
    command
        ->add_option("FILE.db", request.database,
                     "A database that 'inspect --save' or 'clearance --save' wrote")
        ->required();
    AddPicture(*command, request.picture);
    AddJson(*command, request.json);
    command->callback([&] { status = cli_Show(request) ? kFindings : kDone; });
}

/// All that stands behind the script is its own, so the command has no options; a call with a
/// script does not come here.
void AddRun(CLI::App& app) {
    CLI::App* command = app.add_subcommand(
        "run", "Run a Python script that uses the library as the module 'ktsovu'.");
    command->add_option("SCRIPT.py", "The script")->required();
    command->add_option("ARGS", "Its arguments, sys.argv[1:]");
    command->footer(
        "Arguments, traceback and exit status are those of 'python3 SCRIPT.py ARGS'. The system's\n"
        "python3 imports the same module where it is installed; help(ktsovu) tells what it "
        "offers.");
}

bool IsScriptRun(int argumentCount, char** arguments) {
    return argumentCount > 2 && arguments[1] == std::string_view("run") && arguments[2][0] != '-';
}

int Fail(const std::string& cause) {
    std::cerr << "ktsovu: " << hst_CleanName(cause) << std::endl;
    return kBadInput;
}

int FailUsage(const std::string& cause) {
    return Fail(cause + " ('ktsovu --help' tells the usage)");
}

int Parse(CLI::App& app, int argumentCount, char** arguments) {
    try {
        app.parse(argumentCount, arguments);
        return kDone;
    } catch (const CLI::Success& request) {  // --help, --version
        return app.exit(request);
    } catch (const CLI::RequiredError& error) {
        if (!app.get_subcommands().empty()) return FailUsage(error.what());
        return FailUsage(argumentCount > 1 ? std::string("'") + arguments[1] + "' is no command"
                                           : "a command is required");
    } catch (const CLI::Error& error) {
        return FailUsage(error.what());
    }
}

}  // namespace

int cli_Run(int argumentCount, char** arguments, cli_ScriptRunner runScript) {
    try {
        const hst_ClassRegistration classes;
        if (IsScriptRun(argumentCount, arguments)) {
            return runScript(argumentCount - 2, arguments + 2);
        }
        CLI::App app(kDescription, "ktsovu");
        app.set_version_flag("--version", "ktsovu " KTSOVU_VERSION, "Print the version and exit");
        app.set_help_flag("--help", "Print this help and exit");
        app.footer(kFooter);
        app.require_subcommand(1);
        int status = kDone;
        cli_InspectRequest inspect;
        cli_ClearanceRequest clearance;
        cli_ShowRequest show;
        cli_DiffRequest diff;
        AddInspect(app, inspect);
        AddClearance(app, clearance, status);
        AddShow(app, show, status);
        AddDiff(app, diff, status);
        AddRun(app);
        const int usage = Parse(app, argumentCount, arguments);
        return usage == kDone ? status : usage;
    } catch (const std::bad_alloc&) {
        return Fail("out of memory");
    } catch (const std::exception& error) {
        return Fail(error.what());
    }
}
