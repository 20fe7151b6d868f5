/* SPDX-License-Identifier: MIT */
/* A small host: brox_example_host [--show] DATA-FOLDER */
#include "brox_proxy.h"
#include "host_window.h"
#include "standin.h"
#include "zeb_lowlevel.h"

#include <stdio.h>
#include <string.h>

static const double sizes_per_mm = 400000;

static const standin_tool tools[] = {
    /* plated, standard, -0.05 mm, +0.1 mm, 0.8 mm, 120 holes */
    {0, 0, 20000, 40000, 320000, 120},
    /* via, standard, +-0.05 mm, 0.3 mm, 840 holes */
    {2, 0, 20000, 20000, 120000, 840},
};

static void model_changed(int step_num, const char* old_name, const char* new_name)
{
    if (new_name) {
        printf("step %d: model %s is now %s\n", step_num, old_name, new_name);
    } else {
        printf("step %d: model %s is gone\n", step_num, old_name);
    }
}

/** A job with one step and one drilled layer, in the stand-ins instead of a database. */
static int load_job(void)
{
    standin_set_job("demo");
    const int stpid = standin_add_step("board", 1);
    const int layer = standin_add_layer(stpid, "drill");
    for (size_t i = 0; i < sizeof tools / sizeof tools[0]; ++i) {
        standin_add_tool(layer, &tools[i]);
    }
    return stpid;
}

static int print_drill(int stpid, const char* model, const standin_tool* tool)
{
    int drill_size = 0;
    char bit[8] = "";
    const int status = brox__proxy_calc_drill_size(stpid, model, tool->tool_type,
        tool->tool_sub_type, tool->min_tol, tool->max_tol, tool->finished_size, &drill_size, bit);
    if (status == 0) {
        printf("%s: hole %.3f mm, drill %.3f mm, bit %s\n", model,
            tool->finished_size / sizes_per_mm, drill_size / sizes_per_mm, bit[0] ? bit : "none");
    }
    return status;
}

static int print_table(int stpid)
{
    char** models = NULL;
    int num_models = 0;
    int status = brox__proxy_get_model_list(stpid, &models, &num_models);
    for (int i = 0; models && i < num_models; ++i) {
        for (size_t k = 0; status == 0 && k < sizeof tools / sizeof tools[0]; ++k) {
            status = print_drill(stpid, models[i], &tools[k]);
        }
        zeb__mem_free(models[i], 1, __FILE__, __LINE__);
    }
    zeb__mem_free(models, 1, __FILE__, __LINE__);
    return status;
}

/** The calculation has made a viewer, although nobody has seen it. */
static int end_viewer(int stpid)
{
    BroxViewer* viewer = NULL;
    int ok = 0;
    int status = brox__proxy_can_close(stpid, &ok);
    if (status == 0) {
        printf("may close: %s\n", ok ? "yes" : "no");
        status = brox__proxy_get_brox(stpid, &viewer);
    }
    if (status == 0) {
        status = brox__proxy_close_brox(stpid);
        host_delete_viewer(viewer);
    }
    return status;
}

int main(int argc, char** argv)
{
    host_start_qt(&argc, argv);
    const int show = argc > 2 && strcmp(argv[1], "--show") == 0;
    if (argc != 2 + show) {
        fprintf(stderr, "brox_example_host [--show] DATA-FOLDER\n");
        host_end_qt();
        return 2;
    }
    standin_set_data_dir(argv[argc - 1]);
    standin_set_resource_dir(RESOURCE_DIR);
    const int stpid = load_job();

    brox__proxy_set_model_renamed_deleted_cb(model_changed);
    int status = show ? host_show_viewer(stpid) : print_table(stpid);
    if (status == 0 && !show) {
        status = end_viewer(stpid);
    }
    host_end_qt();
    if (status != 0) {
        fprintf(stderr, "brox reports status %d\n", status);
    }
    return status == 0 ? 0 : 1;
}
