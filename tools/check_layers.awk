# The rules of tools/check_layers. Reads the paths of the tree's sources and CMakeLists.txt files,
# one a line, relative to the working folder; prints what breaks a rule and exits with 1 if
# anything does.
#
# Which rooms belong to the calculation library and which are plain is read from the build: the
# folders named below as a whole, and what a CMakeLists.txt gives to orvane_calc or orvane_models.

BEGIN {
    count = split("core functions output storage windows editor app cli plot", order, " ")
    for (i = 1; i <= count; i++) floor_of[order[i]] = i
    floor_of["locus"] = floor_of["editor"]  # side by side: neither includes the other
    floor_of["tests"] = floor_of["bench"] = floor_of["tools"] = floor_of["fuzz"] = outside = 100

    plain_folder["core"] = plain_folder["functions"] = plain_folder["output"] = 1
    plain_folder["cli"] = 1
    calc_folder["core"] = calc_folder["functions"] = calc_folder["output"] = 1

    # The two doors: a node holds its value, and a pass asks what a word is.
    door["functions/value.h"] = door["functions/keyword_table.h"] = 1
}

/CMakeLists\.txt$/ { read_build($0); next }
{ files[++file_count] = $0; is_file[$0] = 1 }

END {
    for (f = 1; f <= file_count; f++) {
        check_folder(files[f])
        read_source(files[f])
    }
    for (f = 1; f <= file_count; f++) check_arrows(files[f])
    check_qt()
    check_circles()

    if (file_count == 0) fail("no source was found")
    if (failures) exit 1
    print file_count " files keep the order"
}

function fail(message) { print message; failures++ }

function folder_of(path) { return substr(path, 1, index(path, "/") - 1) }

function room_of(path) { sub(/\.[a-z]+$/, "", path); return path }

function is_calc(path) {
    return folder_of(path) in calc_folder || target_of[room_of(path)] == "orvane_calc"
}

function is_plain(path) {
    return folder_of(path) in plain_folder || target_of[room_of(path)] != ""
}

# Fills target_of for the rooms that this CMakeLists.txt gives to a plain target.
function read_build(path,    folder, line, words, count, i, target) {
    folder = path
    sub(/[^\/]*$/, "", folder)
    while ((getline line < path) > 0) {
        sub(/#.*/, "", line)
        gsub(/[()]/, " & ", line)
        count = split(line, words, " ")
        for (i = 1; i <= count; i++) {
            if (words[i] == ")") target = ""
            else if (words[i] ~ /^orvane_(calc|models)$/) target = words[i]
            else if (target != "" && words[i] ~ /\.(cpp|h)$/) {
                target_of[room_of(folder words[i])] = target
            }
        }
    }
    close(path)
}

# The file of the tree that an include names, beside the includer or from the root, else "".
function resolve(from, name,    beside) {
    beside = from
    sub(/[^\/]*$/, "", beside)
    if ((beside name) in is_file) return beside name
    return name in is_file ? name : ""
}

# Fills includes, and qt_header where one is used.
function read_source(path,    line, name, target) {
    while ((getline line < path) > 0) {
        if (line !~ /^[ \t]*#[ \t]*include[ \t]*[<"]/) continue
        name = line
        sub(/^[^<"]*[<"]/, "", name)
        sub(/[>"].*/, "", name)
        target = resolve(path, name)
        if (target != "") includes[path, ++include_count[path]] = target
        else if (name ~ /^(Q[A-Z]|Qt[A-Za-z0-9]*\/|q[a-z0-9_]+\.h$)/) qt_header[path] = name
    }
    close(path)
}

function check_folder(path,    folder) {
    folder = folder_of(path)
    if (folder in floor_of || folder in reported) return
    reported[folder] = 1
    fail(folder "/: no floor is known for this folder")
}

function may_include(path, target,    from, to) {
    from = folder_of(path)
    to = folder_of(target)
    if (from == to || floor_of[from] == outside) return 1
    return floor_of[to] < floor_of[from] || (from == "core" && target in door)
}

function check_arrows(path,    i, target) {
    for (i = 1; i <= include_count[path]; i++) {
        target = includes[path, i]
        if (!may_include(path, target)) {
            fail(path " includes " target ": " folder_of(path) " may not stand on " \
                 folder_of(target))
        } else if (is_calc(path) && !is_calc(target)) {
            fail(path " includes " target ": this is outside the calculation library")
        }
    }
}

# What a plain room includes has to be plain as well, in however many steps.
function check_qt(    f, i, path, target, queue, queued, next_one) {
    for (f = 1; f <= file_count; f++) {
        if (!is_plain(files[f])) continue
        plain_because[files[f]] = "a plain room"
        queue[++queued] = files[f]
    }
    for (next_one = 1; next_one <= queued; next_one++) {
        path = queue[next_one]
        if (path in qt_header) {
            fail(path " includes <" qt_header[path] ">: it is " plain_because[path])
        }
        for (i = 1; i <= include_count[path]; i++) {
            target = includes[path, i]
            if (target in plain_because) continue
            plain_because[target] = "included by " path ", a plain room"
            queue[++queued] = target
        }
    }
}

# Takes rooms away that stand only on rooms already taken away; what is left then stands on a
# circle.
function check_circles(    f, i, room, target, taken) {
    for (f = 1; f <= file_count; f++) {
        room = room_of(files[f])
        left[room] = 1
        for (i = 1; i <= include_count[files[f]]; i++) {
            target = room_of(includes[files[f], i])
            if (target != room) stands_on[room, ++edge_count[room]] = target
        }
    }
    do {
        taken = 0
        for (room in left) {
            if (next_left(room) != "") continue
            delete left[room]
            taken++
        }
    } while (taken)
    for (f = 1; f <= file_count; f++) {
        if (!(room_of(files[f]) in left)) continue
        fail("circle: " circle_from(room_of(files[f])))
        return
    }
}

# The first room that `room` stands on and that is left, else "".
function next_left(room,    i) {
    for (i = 1; i <= edge_count[room]; i++) {
        if (stands_on[room, i] in left) return stands_on[room, i]
    }
    return ""
}

# From a room that is left, going on comes sooner or later to a room seen before.
function circle_from(room,    steps, walk, seen_at, i, text) {
    while (!(room in seen_at)) {
        seen_at[room] = ++steps
        walk[steps] = room
        room = next_left(room)
    }
    for (i = seen_at[room]; i <= steps; i++) text = text walk[i] " -> "
    return text room
}
