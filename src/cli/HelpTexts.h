// SPDX-License-Identifier: Apache-2.0
// What --help says below the options.
#pragma once

namespace qor::cli::help {

inline constexpr const char* kDescription =
    "Checks business-process models against the cardinality rules of their method library.";

inline constexpr const char* kExitCodes =
    "Exit codes: 0 clean, 1 findings, 2 wrong use, 3 input not readable or not valid,\n"
    "4 locked or busy, 5 output not written, 70 internal error.\n";

inline constexpr const char* kCheckExamples =
    "Examples:\n"
    "  qor check order.bpmn\n"
    "  qor check models\n"
    "  qor check --library house-rules.yaml models/*.yaml\n"
    "  qor check --json *.bpmn > report.json\n"
    "  generate-model | qor check --first -\n\n"
    "FILE is a model file (YAML or JSON), a BPMN 2.0 file, a folder with such files, or - for\n"
    "standard input. A model file names its library; BPMN files are checked with the library\n"
    "\"bpmn\" that comes along.\n";

inline constexpr const char* kLibraryExamples =
    "Examples:\n"
    "  qor library house-rules.yaml\n"
    "  qor library --json bpmn\n"
    "  qor library check house-rules.yaml\n\n"
    "FILE is a library file, or the name of a library that comes along (\"bpmn\").\n";

inline constexpr const char* kRulesExamples =
    "Examples:\n"
    "  qor rules house-rules.yaml\n"
    "  qor rules --class Task bpmn\n"
    "  qor rules --doctor house-rules.yaml --models models/*.yaml --against house-rules-today.yaml\n\n"
    "Errors in rule texts come first, each with its place in the file. FILE is a library file,\n"
    "or the name of a library that comes along (\"bpmn\").\n";

inline constexpr const char* kCalendarExamples =
    "Examples:\n"
    "  qor calendar show shop.cal\n"
    "  qor calendar sum shop.cal --from 1/08:00 --to 8/08:00\n"
    "  qor calendar add shop.cal 5/16:00 3h\n"
    "  qor calendar add shop.cal -- 5/16:00 -3h\n"
    "  qor calendar union early.cal late.cal > both.cal\n"
    "  qor calendar days --weekday Monday --year 2027\n\n"
    "An INSTANT is a number of seconds or DAY/HH:MM[:SS], a DURATION a number of seconds or as in\n"
    "1d12h30m. FILE is a calendar file, or - for standard input.\n";

inline constexpr const char* kDistributionExamples =
    "Examples:\n"
    "  qor distribution check \"Uniform (3 ; 7)\"\n"
    "  qor distribution mean E0.5\n";

inline constexpr const char* kConvertExamples =
    "Examples:\n"
    "  qor convert shop.qor \"Look\" \"Task:Check\" --to Decision --dry-run\n"
    "  qor convert --model Monday shop.qor \"Look\" --to Decision\n\n"
    "All objects are converted or none. OBJECT is a name, or CLASS:NAME where several classes have it.\n";

inline constexpr const char* kTransferExamples =
    "Examples:\n"
    "  qor transfer shop.qor --from \"Look\" --to \"Listen\" --to \"Feel\" --attributes Costs,size\n\n"
    "What fits is written; with --all nothing, unless everything fits.\n";

inline constexpr const char* kSimExamples =
    "Examples:\n"
    "  qor sim options order-handling\n"
    "  qor sim check order-handling orders.yaml\n"
    "  qor sim reset --dry-run --model \"Take an order\" orders.yaml\n\n"
    "LIB is a library file, or the name of a library that comes along (\"bpmn\", \"order-handling\").\n";

inline constexpr const char* kHierarchyExamples =
    "Examples:\n"
    "  qor hierarchy processes/\n"
    "  qor hierarchy --where-used --model \"Ship goods\" processes/\n"
    "  qor hierarchy --broken processes/\n"
    "  qor hierarchy --model \"Handle an order\" --svg order.svg processes/\n"
    "  qor hierarchy --broken shop.qor\n\n"
    "MODEL is a model file, a BPMN 2.0 file, a folder of them (calls between files are followed), or a\n"
    "repository file, as FILE#LIBRARY when it holds several libraries.\n"
    "--broken ends with code 1 when a reference leads nowhere or to several objects.\n";

inline constexpr const char* kRenameExamples =
    "Examples:\n"
    "  qor rename --dry-run orders.yaml\n"
    "  qor rename --dry-run --json models/ > names.json\n"
    "  qor rename --model Monday shop.qor\n\n"
    "MODEL is a repository file (FILE, or FILE#LIBRARY), or with --dry-run a model file or a folder.\n"
    "How a class's objects are named stands in its attribute\n"
    "\"__NameGeneration__\". Ends with code 1 when such a text is wrong.\n";

inline constexpr const char* kRepoExamples =
    "Examples:\n"
    "  qor repo init shop.qor\n"
    "  qor repo import shop.qor house-rules.yaml models/*.yaml order.bpmn\n"
    "  qor repo export shop.qor folder\n"
    "  qor repo backup shop.qor /backup/shop.qor\n"
    "  qor check shop.qor\n\n"
    "A repository file holds method libraries and models; every command that reads libraries or\n"
    "models takes it, too, as FILE or, to name one of its libraries, as FILE#LIBRARY.\n";

inline constexpr const char* kUserExamples =
    "Examples:\n"
    "  qor user add shop.qor ada --display \"Ada Lovelace\"\n"
    "  qor user add shop.qor --user ada bob cyd --group Staff\n"
    "  qor user join shop.qor --user ada bob Bosses\n"
    "  qor user grant shop.qor --user ada bob sub-administrator\n"
    "  qor user list shop.qor\n\n"
    "Only administrators and sub-administrators change users; while there are none, everybody.\n";

inline constexpr const char* kUserGroupExamples =
    "Examples:\n"
    "  qor group add shop.qor Staff Bosses\n"
    "  qor group join shop.qor Bosses Staff\n"
    "  qor group list shop.qor Staff\n\n"
    "Who is in a group that lies in others counts as one of their users, too.\n";

inline constexpr const char* kPermissionExamples =
    "Examples:\n"
    "  qor permission grant shop.qor Staff read Sales Sales/Orders\n"
    "  qor permission set shop.qor Sales --to Staff read --sub-groups adapted --dry-run\n"
    "  qor permission list shop.qor\n\n"
    "A model group is named by its way from the top, or by its name alone where no other has it.\n";

inline constexpr const char* kAccessExamples =
    "Examples:\n"
    "  qor access shop.qor ada --why\n"
    "  qor access shop.qor --who Sales/Orders\n";

inline constexpr const char* kLogExamples =
    "Examples:\n"
    "  qor log start shop.qor\n"
    "  qor log show --from 2026-03 --by ada shop.qor\n"
    "  qor log export shop.qor log.csv\n"
    "  qor log verify --verification-key - --head 1042-oPc... shop.qor\n\n"
    "Every line is enciphered with a key file outside the repository and sealed to the one before.\n"
    "verify ends with code 1 when somebody has tampered with it.\n";

inline constexpr const char* kConnectExamples =
    "Examples:\n"
    "  qor may-connect bpmn \"Sequence flow\" Task \"End event\"\n"
    "  qor may-connect --in orders.yaml workshop.yaml then Check Pack\n\n"
    "SOURCE and TARGET are classes. With --in they are objects of a model, by name, by CLASS/NAME or by\n"
    "identifier in the file; a class then stands for a new object. Ends with code 1 when a rule refuses.\n";

}  // namespace qor::cli::help
