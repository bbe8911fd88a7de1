// SPDX-License-Identifier: MIT
// Links what the viewer links and does nothing: the floor of its requests.
int main()
{
    return 0;
}
