#include "app/Application.h"
#include "app/mdiCAPD.h"
#include "app/modMain.h"
#include "components/Registry.h"
#include "toolkit/Theme.h"

int main(int argc, char* argv[]) {
    Application application(argc, argv);
    toolkit::ApplyTheme(application);
    components::RegisterBuiltIns();
    try {
        const std::unique_ptr<mdiCAPD> frame = modMain::Main();
        if (!frame)
            return 0;
        return frame->isVisible() ? application.exec() : 1;
    } catch (const base::RuntimeError& error) {
        Application::Report(error);
        return 1;
    }
}
