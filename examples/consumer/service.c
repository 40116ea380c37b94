/* Owns nothing and answers nobody: shows that the generated skeleton of the installed library compiles and links. */
#include <dbus_system.h>
#include <stdio.h>

int main(void) {
  ComVornLinuxSystem* const skeleton = com_vorn_linux_system_skeleton_new();
  const GDBusInterfaceInfo* const info = com_vorn_linux_system_interface_info();
  printf("skeleton of %s\n", info->name);
  g_object_unref(skeleton);
  return 0;
}
