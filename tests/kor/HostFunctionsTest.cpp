#include <kor/support/RunningScene.h>
#include <orbel/host/HostApi.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr unsigned dataRequest = 0x55444154;
constexpr unsigned buildRequest = 0x494e4954;

const char* const scene =
    "[{'name': 'a', 'geometry': {'type': 'TEXT'}, 'plugins': [{'kind': 'Trial'}, {'kind': 'Missing'}], 'children': "
    "[{'name': 'c', 'geometry': {'type': 'Shape'}}]}, {'name': 'b'}]";

constexpr int a = 2;
constexpr int text = 3;
constexpr int trial = 4;
constexpr int missing = 5;
constexpr int c = 6;
constexpr int shape = 7;
constexpr int shapePlugIn = 8;
constexpr int b = 9;

template <class Call>
std::string textOf(Call call, int id) {
    const char* found = "unchanged";
    call(id, &found);
    return found;
}

int moved(void (*move)(CONTAINER*), int from) {
    CONTAINER container = from;
    move(&container);
    return container.id;
}

TEST(KorHostFunctions, TellTheSceneAndWhatIsCalled) {
    RunningScene running(scene);
    SCENE local;
    EXPECT_EQ(_api__get_sceneid_local(&local), 1);
    EXPECT_EQ(local.id, 1);
    CONTAINER container = 99;
    EXPECT_EQ(_api__get_local_container(&container), -1);
    EXPECT_EQ(container.id, -1);
    int root = -1;
    EXPECT_EQ(_api__scene_get_root(1, &root), 1);
    EXPECT_EQ(root, a);
    EXPECT_EQ(_api__scene_get_root(a, &root), 0);
    EXPECT_EQ(textOf(_api__scene_get_name, 1), "Kor");
    EXPECT_EQ(textOf(_api__scene_get_name, 77), "");
}

TEST(KorHostFunctions, FindObjects) {
    RunningScene running(scene);
    EXPECT_EQ(_api__get_objectid("a", "", 64), a);
    EXPECT_EQ(_api__get_objectid("a/c", "", 64), c);
    EXPECT_EQ(_api__get_objectid("none", "", 64), -1);
    for (const int id : {1, a, text, trial, missing, c, shape, shapePlugIn, b}) {
        EXPECT_EQ(_api__object_valid(id), 1) << id;
        EXPECT_EQ(_api__get_objectid_from_objectid(id), id);
    }
    for (const int id : {-1, 0, 77}) {
        EXPECT_EQ(_api__object_valid(id), 0) << id;
        EXPECT_EQ(_api__get_objectid_from_objectid(id), -1);
    }
}

TEST(KorHostFunctions, NameEveryKindOfObject) {
    RunningScene running(scene);
    EXPECT_EQ(textOf(_api__container_get_name, a), "a");
    EXPECT_EQ(textOf(_api__container_get_name, trial), "Trial");
    EXPECT_EQ(textOf(_api__container_get_name, text), "TEXT");
    EXPECT_EQ(textOf(_api__container_get_name, 77), "");
}

TEST(KorHostFunctions, MoveAmongContainers) {
    RunningScene running(scene);
    EXPECT_EQ(moved(_api__container_next, a), b);
    EXPECT_EQ(moved(_api__container_next, b), -1);
    EXPECT_EQ(moved(_api__container_next, c), -1);
    EXPECT_EQ(moved(_api__container_level_down_2, a), c);
    EXPECT_EQ(moved(_api__container_level_down_2, b), -1);
    EXPECT_EQ(moved(_api__container_level_up_2, c), a);
    EXPECT_EQ(moved(_api__container_level_up_2, a), -1);
    for (const int dead : {-1, 77, trial, text, 1})
        for (auto* const move : {_api__container_next, _api__container_level_down_2, _api__container_level_up_2})
            EXPECT_EQ(moved(move, dead), -1) << dead;
}

TEST(KorHostFunctions, TellGeometries) {
    RunningScene running(scene);
    int geometry = 99;
    _api__container_get_geometry(a, &geometry);
    EXPECT_EQ(geometry, text);
    for (const int without : {b, 77, -1}) {
        geometry = 99;
        _api__container_get_geometry(without, &geometry);
        EXPECT_EQ(geometry, -1);
    }
    EXPECT_EQ(textOf(_api__get_geom_type, text), "TEXT");
    EXPECT_EQ(textOf(_api__get_geom_type, shape), "Shape");
    EXPECT_EQ(textOf(_api__get_geom_type, 77), "");
}

TEST(KorHostFunctions, TellPlugIns) {
    RunningScene running(scene);
    int found = 99;
    EXPECT_EQ(_api__container_get_function(a, &found, "Trial"), 1);
    EXPECT_EQ(found, trial);
    EXPECT_EQ(_api__container_get_function(a, &found, "Second"), 0);
    EXPECT_EQ(found, -1);
    EXPECT_EQ(_api__container_get_function(77, &found, "Trial"), 0);
    int all[3] = {99, 99, 99};
    // The one that is missing is left out.
    EXPECT_EQ(_api__container_get_function_plugins(a, all, 3), 1);
    EXPECT_EQ(all[0], trial);
    EXPECT_EQ(all[1], -1);
    EXPECT_EQ(all[2], 99);
    int none[1] = {99};
    EXPECT_EQ(_api__container_get_function_plugins(a, none, 0), 1);
    EXPECT_EQ(none[0], 99);
    EXPECT_EQ(_api__container_get_function_plugins(a, none, 1), 1);
    EXPECT_EQ(none[0], trial);
    EXPECT_EQ(_api__container_get_function_plugins(77, all, 3), 0);
}

TEST(KorHostFunctions, CreateAndDeletePlugIns) {
    RunningScene running(scene);
    _api__container_create_function(b, "BUILT_IN*FUNCTION*Trial");
    int found = -1;
    EXPECT_EQ(_api__container_get_function(b, &found, "Trial"), 1);
    _api__container_delete_function(b, "Trial");
    EXPECT_EQ(_api__object_valid(found), 0);
    _api__container_delete_function(b, "Trial");
    _api__container_create_function(77, "Trial");
    _api__container_delete_function(77, "Trial");
    _api__container_create_function(b, "BUILT_IN*FUNCTION*");
    EXPECT_TRUE(running.container("b").plugins.empty());
}

TEST(KorHostFunctions, HandOverRecords) {
    RunningScene running(scene);
    void* data = nullptr;
    _api__get_function_dataptr(trial, &data);
    const auto* const record = static_cast<korPluginRecord*>(data);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->marker, 9473);
    EXPECT_EQ(record->container.id, a);
    EXPECT_EQ(record->sceneId, 1);
    EXPECT_EQ(record->handler, running.scene.plugIn(trial)->handler.get());
    for (const unsigned request : {dataRequest, buildRequest}) {
        void* answer = nullptr;
        _api__function_dispatcher(trial, request, nullptr, &answer);
        EXPECT_EQ(answer, data);
    }
    void* answer = &running;
    _api__function_dispatcher(trial, 1, nullptr, &answer);
    EXPECT_EQ(answer, nullptr);
    _api__get_function_dataptr(missing, &answer);
    EXPECT_EQ(answer, nullptr);
    _api__function_dispatcher(missing, dataRequest, nullptr, &answer);
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(static_cast<korPluginRecord*>(answer)->handler, nullptr);
    for (const int dead : {77, -1, a}) {
        answer = &running;
        _api__get_function_dataptr(dead, &answer);
        EXPECT_EQ(answer, nullptr) << dead;
        answer = &running;
        _api__function_dispatcher(dead, dataRequest, nullptr, &answer);
        EXPECT_EQ(answer, nullptr) << dead;
    }
}

TEST(KorHostFunctions, HandOverRecordsOfGeometries) {
    RunningScene running(scene);
    void* answer = nullptr;
    _api__geom_dispatcher(shape, dataRequest, nullptr, &answer);
    EXPECT_EQ(answer, &running.scene.plugIn(shapePlugIn)->record);
    for (const int without : {text, 77, -1}) {
        answer = &running;
        _api__geom_dispatcher(without, dataRequest, nullptr, &answer);
        EXPECT_EQ(answer, nullptr) << without;
    }
}

TEST(KorHostFunctions, RunCommands) {
    RunningScene running(scene);
    const char* answer = nullptr;
    EXPECT_EQ(_api__kor_send_command("0 a*NAME GET", &answer), 1);
    EXPECT_STREQ(answer, "a");
}

/// All of them, with ids that are dead and nothing to write to.
void callAllWithNulls() {
    _api__get_local_container(nullptr);
    _api__get_sceneid_local(nullptr);
    EXPECT_EQ(_api__get_objectid(nullptr, nullptr, 0), -1);
    for (const int id : {-1, 0, 1, a, text, trial, shape, 77}) {
        _api__container_get_name(id, nullptr);
        _api__container_get_geometry(id, nullptr);
        _api__container_get_function(id, nullptr, nullptr);
        _api__container_get_function_plugins(id, nullptr, 5);
        _api__container_create_function(id, nullptr);
        _api__container_delete_function(id, nullptr);
        _api__scene_get_root(id, nullptr);
        _api__scene_get_name(id, nullptr);
        _api__get_function_dataptr(id, nullptr);
        _api__function_dispatcher(id, dataRequest, nullptr, nullptr);
        _api__get_geom_type(id, nullptr);
        _api__geom_dispatcher(id, dataRequest, nullptr, nullptr);
    }
    _api__container_next(nullptr);
    _api__container_level_up_2(nullptr);
    _api__container_level_down_2(nullptr);
    _api__kor_send_command(nullptr, nullptr);
}

TEST(KorHostFunctions, TakeNulls) {
    RunningScene running(scene);
    callAllWithNulls();
    EXPECT_EQ(running.scene.allPlugIns().size(), 3U);
}

TEST(KorHostFunctions, FailWithoutAHost) {
    callAllWithNulls();
    CONTAINER container = 5;
    SCENE local = 5;
    EXPECT_EQ(_api__get_local_container(&container), -1);
    EXPECT_EQ(container.id, -1);
    EXPECT_EQ(_api__get_sceneid_local(&local), -1);
    EXPECT_EQ(local.id, -1);
    EXPECT_EQ(_api__get_objectid("a", "", 64), -1);
    EXPECT_EQ(_api__get_objectid_from_objectid(1), -1);
    EXPECT_EQ(_api__object_valid(1), 0);
    for (auto* const name : {_api__container_get_name, _api__scene_get_name, _api__get_geom_type})
        EXPECT_EQ(textOf(name, 1), "");
    for (auto* const move : {_api__container_next, _api__container_level_down_2, _api__container_level_up_2})
        EXPECT_EQ(moved(move, 2), -1);
    int id = 5;
    _api__container_get_geometry(a, &id);
    EXPECT_EQ(id, -1);
    EXPECT_EQ(_api__container_get_function(a, &id, "Trial"), 0);
    EXPECT_EQ(_api__container_get_function_plugins(a, &id, 1), 0);
    EXPECT_EQ(_api__scene_get_root(1, &id), 0);
    void* data = &id;
    _api__get_function_dataptr(trial, &data);
    EXPECT_EQ(data, nullptr);
    data = &id;
    _api__function_dispatcher(trial, dataRequest, nullptr, &data);
    EXPECT_EQ(data, nullptr);
    data = &id;
    _api__geom_dispatcher(shape, dataRequest, nullptr, &data);
    EXPECT_EQ(data, nullptr);
    const char* answer = nullptr;
    EXPECT_EQ(_api__kor_send_command("MAIN*ONAIR GET_INFO", &answer), 0);
    EXPECT_STREQ(answer, "");
}

} // namespace
